#pragma once

#include "CardSource.h"

#include <filesystem>
#include <string>

namespace idcard {

/// The cards of the virtual desk: a folder with a file for each. The one that was written last lies on the
/// reader; it is lifted by taking it away and laid on again by touching it. A folder that is not there is a
/// reader that is not attached.
///
///     type = 0;                      # above 3: a card of a kind that nobody knows
///     name = "..."; gender = "1"; nation = "01"; birth = "19900101"; address = "..."; number = "...";
///     authority = "..."; from = "20200101"; to = "20400101";
///     other_name, pass_number, issues, version, category: what other types have
///     picture = "portrait.bmp";      # JPEG, PNG or BMP, beginning at the folder
///
/// All but `type` may be left out.
class DeskCards : public CardSource
{
public:
    explicit DeskCards(std::filesystem::path folder) : folder_(std::move(folder)) {}

    bool open() override;
    std::optional<Card> read(int& failure) override;
    ReaderState look() override;

private:
    std::string cardThatLiesThere(std::filesystem::path& file) const;

    std::filesystem::path folder_;
    std::string lastRead_; ///< as cardThatLiesThere()
    std::string refused_;  ///< the same for one that could not be read
};

} // namespace idcard

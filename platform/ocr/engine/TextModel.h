#pragma once

#include "Limit.h"
#include "ReadPage.h"
#include "Watch.h"

#include <opencv2/core.hpp>

#include <memory>
#include <string>

namespace mirvak {

constexpr double nominalDpi = 300; ///< letters are scaled to what they measure at that resolution

enum class Shape { block, row };

/// Whether the language is written without spaces between its words; by its model's name.
bool isUnspaced(const std::string& language);

/// One language's recogniser. One thread at a time; call within a SingleThread.
class TextModel
{
public:
    /// `directory` holds LANGUAGE.traineddata; null when that file is missing or broken.
    static std::unique_ptr<TextModel> load(const std::string& directory, const std::string& language);
    ~TextModel();

    const std::string& language() const { return language_; }
    /// Reads a part of a page: grey, dark letters on white. `origin` is where it lies on the page. Stops at
    /// the limit: `late` becomes true and the part counts as empty.
    ReadBlock read(const cv::Mat& part,
                   const cv::Point& origin,
                   Shape shape,
                   const Limit& limit,
                   bool& late,
                   const Stretch& stretch = {});
    /// Reads a page that the recogniser divides by itself.
    ReadBlock
    readPage(const cv::Mat& grey, double dpi, const Limit& limit, bool& late, const Stretch& stretch = {});
    /// Whether the model's dictionary has the word.
    bool knows(const std::string& word) const;
    bool isUnspaced() const { return mirvak::isUnspaced(language_); }

private:
    struct Engine;
    TextModel(std::unique_ptr<Engine> engine, std::string language);

    struct Call;
    ReadBlock recognise(const cv::Mat& part, const Call& call, bool& late);

    std::unique_ptr<Engine> engine_;
    std::string language_;
};

} // namespace mirvak

#include "CardReader.h"

#include "AtomicFile.h"
#include "Codec.h"
#include "DeskCards.h"
#include "DeskConfig.h"
#include "ModuleCards.h"
#include "UserConfig.h"
#include "hidcard.h"

#include <cstdio>
#include <unistd.h>

namespace idcard {
namespace {

bool writePortrait(const std::filesystem::path& picture, const std::string& path)
{
    if (picture.empty()) {
        std::fprintf(stderr, "card reader: no portrait that can be decoded, none is written\n");
        return false;
    }
    const std::optional<mirvak::Image> portrait = mirvak::readImage(picture);
    if (!portrait) {
        std::fprintf(stderr, "card reader: %s is no picture\n", picture.c_str());
        return false;
    }
    const mirvak::Bytes bytes = mirvak::encodeImage("bmp", *portrait, 0);
    mirvak::AtomicFile file(path, mirvak::IfTaken::replace, mirvak::Readers::owner);
    return file.write(bytes.data(), bytes.size()) && file.commit() == mirvak::AtomicFile::Commit::done;
}

/// What is known of where cards come from; the first that answers is taken.
std::vector<std::unique_ptr<CardSource>> sources()
{
    std::vector<std::unique_ptr<CardSource>> sources;
    const std::optional<DeskConfig> desk = DeskConfig::fromEnvironment();
    const auto reader = ReaderConfig::load(userConfigFile("idcard.cfg"));
    if (reader && (!desk || desk->realDevices))
        sources.push_back(std::make_unique<ModuleCards>(*reader));
    if (desk && desk->idCard)
        sources.push_back(std::make_unique<DeskCards>(desk->idCard->cards));
    return sources;
}

} // namespace

int CardReader::open()
{
    if (source_ && source_->look() != ReaderState::none)
        return HIDCARD_OK;
    close();
    for (std::unique_ptr<CardSource>& source : sources()) {
        const bool answers = source->open();
        if (answers || !source_)
            source_ = std::move(source); // one that does not answer may be attached later
        if (answers)
            return HIDCARD_OK;
    }
    if (!source_)
        std::fprintf(stderr, "card reader: none is set up\n");
    return HIDCARD_NO_READER;
}

void CardReader::close()
{
    source_.reset();
    card_.reset();
}

int CardReader::read()
{
    card_.reset();
    int failure = HIDCARD_NO_READER;
    if (source_)
        card_ = source_->read(failure);
    if (!card_)
        return failure;
    if (!photoPath_.empty() && !writePortrait(card_->picture, photoPath_))
        ::unlink(photoPath_.c_str()); // an earlier one is another person's
    return card_->type;
}

const std::string* CardReader::text(int index) const
{
    if (!card_)
        return nullptr;
    const std::vector<Field>& order = fieldsOf(card_->type);
    if (index < 0 || index >= static_cast<int>(order.size()))
        return nullptr;
    const auto found = card_->texts.find(order[static_cast<size_t>(index)]);
    return found == card_->texts.end() ? nullptr : &found->second;
}

} // namespace idcard

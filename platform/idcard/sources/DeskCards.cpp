#include "DeskCards.h"

#include "hidcard.h"

#include <libconfig.h++>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <sys/stat.h>

namespace idcard {
namespace {

namespace fs = std::filesystem;
using libconfig::Setting;

constexpr struct
{
    const char* key;
    Field field;
} keys[] = {{"name", Field::name},
            {"other_name", Field::otherName},
            {"gender", Field::gender},
            {"nation", Field::nation},
            {"birth", Field::birth},
            {"address", Field::address},
            {"number", Field::number},
            {"authority", Field::authority},
            {"from", Field::from},
            {"to", Field::to},
            {"pass_number", Field::passNumber},
            {"issues", Field::issues},
            {"version", Field::version},
            {"category", Field::category}};

constexpr int mostType = 9;

[[noreturn]] void refuse(const Setting& setting, const std::string& why)
{
    throw std::invalid_argument(std::to_string(setting.getSourceLine()) + ": " + setting.getName() + why);
}

std::string text(const Setting& setting)
{
    if (setting.getType() != Setting::TypeString)
        refuse(setting, " must be a text in double quotes");
    return setting.c_str();
}

void take(Card& card, const Setting& setting, const fs::path& folder)
{
    const std::string key = setting.getName();
    const auto* const known =
        std::find_if(std::begin(keys), std::end(keys), [&](const auto& one) { return one.key == key; });
    if (known != std::end(keys)) {
        card.texts[known->field] = text(setting);
    } else if (key == "picture") {
        card.picture = folder / fs::u8path(text(setting));
    } else if (key == "type" && setting.getType() == Setting::TypeInt && int(setting) >= 0 &&
               int(setting) <= mostType) {
        card.type = setting;
    } else {
        refuse(setting,
               key == "type" ? " must be a number from 0 to " + std::to_string(mostType) : " is not known");
    }
}

Card readCard(const fs::path& file)
{
    libconfig::Config config;
    config.readFile(file.c_str());
    Card card;
    for (const Setting& setting : config.getRoot())
        take(card, setting, file.parent_path());
    return card;
}

std::optional<Card> readOrTell(const fs::path& file)
{
    try {
        return readCard(file);
    } catch (const libconfig::ParseException& wrong) {
        std::fprintf(stderr, "card left out: %s:%d: %s\n", file.c_str(), wrong.getLine(), wrong.getError());
    } catch (const std::invalid_argument& wrong) {
        std::fprintf(stderr, "card left out: %s:%s\n", file.c_str(), wrong.what());
    } catch (const std::exception& wrong) {
        std::fprintf(stderr, "card left out: %s: %s\n", file.c_str(), wrong.what());
    }
    return std::nullopt;
}

/// When the file was laid there, and which one it is. Empty for anything but a card.
std::string stampOf(const fs::path& file)
{
    struct stat entry
    {
    };
    const std::string name = file.filename();
    if (name.front() == '.' || file.extension() != ".cfg" || ::stat(file.c_str(), &entry) != 0 ||
        !S_ISREG(entry.st_mode))
        return {};
    char time[48];
    std::snprintf(time,
                  sizeof time,
                  "%020lld.%09ld ",
                  static_cast<long long>(entry.st_mtim.tv_sec),
                  static_cast<long>(entry.st_mtim.tv_nsec));
    return time + name;
}

} // namespace

bool DeskCards::open()
{
    std::error_code unknown;
    if (fs::is_directory(folder_, unknown))
        return true;
    std::fprintf(stderr, "card reader: there is no folder %s\n", folder_.c_str());
    return false;
}

/// The greatest stamp, and its file; empty when no card lies there.
std::string DeskCards::cardThatLiesThere(fs::path& file) const
{
    std::string latest;
    std::error_code gone;
    for (fs::directory_iterator at(folder_, gone), end; !gone && at != end; at.increment(gone))
        if (std::string stamp = stampOf(at->path()); stamp > latest) {
            latest = std::move(stamp);
            file = at->path();
        }
    return latest;
}

std::optional<Card> DeskCards::read(int& failure)
{
    fs::path file;
    const std::string stamp = cardThatLiesThere(file);
    failure = stamp.empty() ? HIDCARD_NO_CARD : HIDCARD_READ_FAILED;
    if (stamp.empty())
        return std::nullopt;
    std::optional<Card> card = readOrTell(file);
    (card ? lastRead_ : refused_) = stamp;
    return card;
}

ReaderState DeskCards::look()
{
    std::error_code unknown;
    if (!fs::is_directory(folder_, unknown))
        return ReaderState::none;
    fs::path file;
    const std::string stamp = cardThatLiesThere(file);
    if (stamp.empty())
        lastRead_.clear();
    if (!stamp.empty() && stamp == refused_)
        return ReaderState::unreadable;
    return stamp == lastRead_ ? ReaderState::looking : ReaderState::ready;
}

} // namespace idcard

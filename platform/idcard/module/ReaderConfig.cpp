#include "ReaderConfig.h"

#include <libconfig.h++>

#include <cstdio>
#include <stdexcept>

namespace idcard {
namespace {

constexpr int highestType = 3;

int typeOf(const libconfig::Config& config, const char* key, int fallback)
{
    config.lookupValue(key, fallback);
    if (fallback < 1 || fallback > highestType)
        throw std::invalid_argument(std::string(key) + " must be 1, 2 or 3");
    return fallback;
}

bool isUsbId(const std::string& text)
{
    return text.size() == 8 && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

ReaderConfig read(const std::filesystem::path& path)
{
    libconfig::Config file;
    file.readFile(path.c_str());
    ReaderConfig reader;
    file.lookupValue("port", reader.port);
    file.lookupValue("usb", reader.usb);
    file.lookupValue("baud", reader.baud);
    reader.foreignType = typeOf(file, "types.foreign", reader.foreignType);
    reader.residenceType = typeOf(file, "types.residence", reader.residenceType);
    if (reader.port.empty() == reader.usb.empty())
        throw std::invalid_argument("either port or usb is expected");
    if (reader.port.empty() && !isUsbId(reader.usb))
        throw std::invalid_argument("usb must be 8 lowercase hexadecimal digits");
    return reader;
}

} // namespace

std::optional<ReaderConfig> ReaderConfig::load(const std::filesystem::path& path)
{
    std::error_code unknown;
    if (path.empty() || !std::filesystem::exists(path, unknown))
        return std::nullopt;
    try {
        return read(path);
    } catch (const libconfig::ParseException& wrong) {
        std::fprintf(
            stderr, "card reader left out: %s:%d: %s\n", path.c_str(), wrong.getLine(), wrong.getError());
    } catch (const std::exception& wrong) {
        std::fprintf(stderr, "card reader left out: %s: %s\n", path.c_str(), wrong.what());
    }
    return std::nullopt;
}

} // namespace idcard

#include "DeskConfig.h"

#include <libconfig.h++>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <stdexcept>

namespace {

using libconfig::Setting;
namespace fs = std::filesystem;

/// A setting that cannot be meant, with its place in the file.
class DeskError : public std::runtime_error
{
public:
    DeskError(const Setting& setting, const std::string& reason)
        : std::runtime_error(reason), line_(setting.getSourceLine())
    {
    }
    unsigned line() const { return line_; }

private:
    unsigned line_;
};

std::string quoted(const char* name)
{
    return std::string("\"") + name + "\"";
}

const Setting* find(const Setting& group, const char* name)
{
    return group.exists(name) ? &group[name] : nullptr;
}

const Setting& need(const Setting& group, const char* name)
{
    if (!group.exists(name))
        throw DeskError(group, quoted(name) + " is missing");
    return group[name];
}

std::string text(const Setting& setting)
{
    if (setting.getType() != Setting::TypeString)
        throw DeskError(setting, "a text in double quotes is expected");
    return setting.c_str();
}

double number(const Setting& setting)
{
    if (!setting.isNumber())
        throw DeskError(setting, "a number is expected");
    const double value = setting.getType() == Setting::TypeFloat ? static_cast<double>(setting)
                                                                 : static_cast<double>(int(setting));
    if (value < 0)
        throw DeskError(setting, "the number must not be negative");
    return value;
}

int wholeNumber(const Setting& setting, int most)
{
    if (setting.getType() != Setting::TypeInt || int(setting) < 0 || int(setting) > most)
        throw DeskError(setting, "a whole number from 0 to " + std::to_string(most) + " is expected");
    return setting;
}

bool yesNo(const Setting& setting)
{
    if (setting.getType() != Setting::TypeBoolean)
        throw DeskError(setting, "true or false is expected");
    return setting;
}

fs::path pathBelow(const fs::path& folder, const Setting& setting)
{
    const std::string path = text(setting);
    if (path.empty())
        throw DeskError(setting, "the path is empty");
    return (folder / fs::u8path(path)).lexically_normal();
}

void needGroup(const Setting& setting)
{
    if (!setting.isGroup())
        throw DeskError(setting, "a group in braces is expected");
}

DeskConfig::Size size(const Setting& setting)
{
    const std::string name = text(setting);
    if (name == "native")
        return {0, 0};
    constexpr int sideAtMost = 16384;
    DeskConfig::Size size{0, 0};
    char rest = 0;
    const int fields = std::sscanf(name.c_str(), "%5dx%5d%c", &size.width, &size.height, &rest);
    if (fields != 2 || std::min(size.width, size.height) < 1 ||
        std::max(size.width, size.height) > sideAtMost)
        throw DeskError(setting, "a size like \"1600x1200\" or \"native\" is expected");
    return size;
}

std::vector<DeskConfig::Size> sizes(const Setting* list)
{
    if (!list)
        return {{0, 0}};
    if (!list->isAggregate() || list->getLength() == 0)
        throw DeskError(*list, "a list of sizes is expected");
    std::vector<DeskConfig::Size> result;
    for (const Setting& entry : *list)
        result.push_back(size(entry));
    return result;
}

std::string usbId(const Setting& setting)
{
    std::string id = text(setting);
    if (id.size() != 8 || id.find_first_not_of("0123456789abcdef") != std::string::npos)
        throw DeskError(setting, "8 lowercase hexadecimal digits are expected");
    return id;
}

void readFaults(const Setting& group, DeskConfig::Camera& camera)
{
    if (const Setting* after = find(group, "unplug_after"))
        camera.unplugAfter = number(*after);
    if (const Setting* after = find(group, "stall_after"))
        camera.stallAfter = number(*after);
    if (const Setting* every = find(group, "corrupt_every"))
        camera.corruptEvery = wholeNumber(*every, 1000000);
    if (const Setting* fail = find(group, "fail_create"))
        camera.failCreate = yesNo(*fail);
    if (const Setting* fail = find(group, "fail_start"))
        camera.failStart = yesNo(*fail);
    if (const Setting* refused = find(group, "refused"))
        camera.refused = yesNo(*refused);
    if (const Setting* held = find(group, "held"))
        camera.held = yesNo(*held);
}

std::vector<int> controls(const Setting& setting)
{
    const int count = static_cast<int>(std::size(DeskConfig::controlNames));
    std::vector<bool> isNamed(static_cast<size_t>(count), false);
    if (!setting.isAggregate()) {
        isNamed.assign(isNamed.size(), yesNo(setting));
    } else {
        for (const Setting& entry : setting) {
            const auto* const found = std::find(
                std::begin(DeskConfig::controlNames), std::end(DeskConfig::controlNames), text(entry));
            if (found == std::end(DeskConfig::controlNames))
                throw DeskError(entry, quoted(entry.c_str()) + " is no control");
            isNamed[static_cast<size_t>(found - std::begin(DeskConfig::controlNames))] = true;
        }
    }
    std::vector<int> result;
    for (int control = 0; control < count; ++control) {
        if (isNamed[static_cast<size_t>(control)])
            result.push_back(control);
    }
    return result;
}

void refuseUnknown(const Setting& group, std::initializer_list<std::string_view> known)
{
    for (const Setting& setting : group) {
        if (std::find(known.begin(), known.end(), setting.getName()) == known.end())
            throw DeskError(setting, quoted(setting.getName()) + " is not known");
    }
}

DeskConfig::Camera readCamera(const Setting& group, const fs::path& folder)
{
    needGroup(group);
    refuseUnknown(group,
                  {"name",
                   "type",
                   "usb",
                   "source",
                   "fps",
                   "resolutions",
                   "hold",
                   "loop",
                   "unplug_after",
                   "stall_after",
                   "corrupt_every",
                   "fail_create",
                   "fail_start",
                   "refused",
                   "held",
                   "controls"});
    DeskConfig::Camera camera;
    camera.name = text(need(group, "name"));
    camera.source = pathBelow(folder, need(group, "source"));
    camera.resolutions = sizes(find(group, "resolutions"));
    if (const Setting* type = find(group, "type"))
        camera.type = wholeNumber(*type, 3);
    if (const Setting* usb = find(group, "usb"))
        camera.usbId = usbId(*usb);
    if (const Setting* hold = find(group, "hold"))
        camera.holdSeconds = number(*hold);
    if (const Setting* loop = find(group, "loop"))
        camera.loop = yesNo(*loop);
    if (const Setting* fps = find(group, "fps")) {
        camera.framesPerSecond = number(*fps);
        if (camera.framesPerSecond < 0.1 || camera.framesPerSecond > 1000)
            throw DeskError(*fps, "a rate from 0.1 to 1000 frames per second is expected");
    }
    if (const Setting* offered = find(group, "controls"))
        camera.controls = controls(*offered);
    readFaults(group, camera);
    return camera;
}

DeskConfig::Keys readKeys(const Setting& group, const fs::path& folder, size_t cameraCount)
{
    needGroup(group);
    DeskConfig::Keys keys;
    keys.fifo = pathBelow(folder, need(group, "fifo"));
    if (const Setting* camera = find(group, "camera"))
        keys.camera = wholeNumber(*camera, std::max(1, static_cast<int>(cameraCount)) - 1);
    return keys;
}

DeskConfig::Fingerprint readFingerprint(const Setting& group, const fs::path& folder)
{
    needGroup(group);
    DeskConfig::Fingerprint fingerprint;
    fingerprint.prints = pathBelow(folder, need(group, "prints"));
    if (const Setting* delay = find(group, "delay"))
        fingerprint.delaySeconds = number(*delay);
    return fingerprint;
}

DeskConfig readDesk(const Setting& root, const fs::path& folder)
{
    DeskConfig desk;
    if (const Setting* cameras = find(root, "cameras")) {
        if (!cameras->isList())
            throw DeskError(*cameras, "a list in parentheses is expected");
        for (const Setting& camera : *cameras)
            desk.cameras.push_back(readCamera(camera, folder));
    }
    if (const Setting* real = find(root, "real"))
        desk.realDevices = yesNo(*real);
    if (const Setting* keys = find(root, "keys"))
        desk.keys = readKeys(*keys, folder, desk.cameras.size());
    if (const Setting* idCard = find(root, "idcard")) {
        needGroup(*idCard);
        desk.idCard = DeskConfig::IdCard{pathBelow(folder, need(*idCard, "cards"))};
    }
    if (const Setting* fingerprint = find(root, "fingerprint"))
        desk.fingerprint = readFingerprint(*fingerprint, folder);
    if (const Setting* printer = find(root, "printer")) {
        needGroup(*printer);
        desk.printer = DeskConfig::Printer{pathBelow(folder, need(*printer, "paper"))};
    }
    return desk;
}

std::string at(const fs::path& path, unsigned line, const std::string& reason)
{
    return path.string() + ":" + std::to_string(line) + ": " + reason;
}

} // namespace

std::optional<DeskConfig> DeskConfig::load(const fs::path& path, std::string& error)
{
    try {
        libconfig::Config config;
        config.readFile(path.c_str());
        return readDesk(config.getRoot(), fs::absolute(path).parent_path());
    } catch (const DeskError& wrong) {
        error = at(path, wrong.line(), wrong.what());
    } catch (const libconfig::ParseException& wrong) {
        error = at(path, static_cast<unsigned>(wrong.getLine()), wrong.getError());
    } catch (const libconfig::FileIOException&) {
        error = path.string() + ": cannot be read";
    } catch (const std::exception& wrong) {
        error = path.string() + ": " + wrong.what();
    }
    return std::nullopt;
}

fs::path DeskConfig::pathInEnvironment()
{
    const char* path = std::getenv("LUMRO_DESK");
    return path ? path : "";
}

std::optional<DeskConfig> DeskConfig::fromEnvironment()
{
    const fs::path path = pathInEnvironment();
    if (path.empty())
        return std::nullopt;
    std::string error;
    std::optional<DeskConfig> desk = load(path, error);
    if (!desk)
        std::fprintf(stderr, "virtual desk left out: %s\n", error.c_str());
    return desk;
}

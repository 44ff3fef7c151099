#include "CameraTypes.h"

#include "BookFlatModels.h"

#include <libconfig.h++>

#include <algorithm>
#include <cstdio>

namespace mirvak {
namespace {

constexpr int mainCamera = 1;
constexpr int colourCamera = 2;
constexpr int infraredCamera = 3;

int typeOf(const CameraInfo& camera, const TypeOverrides& overrides)
{
    if (camera.type != 0)
        return camera.type;
    if (const auto chosen = overrides.find(camera.usbId); chosen != overrides.end())
        return chosen->second;
    if (camera.greyOnly)
        return infraredCamera;
    return isBookFlatModel(camera.usbId) ? mainCamera : 0;
}

void complain(const std::filesystem::path& path, int line, const char* reason)
{
    std::fprintf(stderr, "camera types left as they are: %s:%d: %s\n", path.c_str(), line, reason);
}

} // namespace

void assignTypes(std::vector<CameraInfo>& cameras, const TypeOverrides& overrides)
{
    CameraInfo* largest = nullptr;
    bool haveMain = false;
    for (CameraInfo& camera : cameras) {
        camera.type = typeOf(camera, overrides);
        haveMain = haveMain || camera.type == mainCamera;
        if (camera.type == 0 && (!largest || camera.largestPixels > largest->largestPixels))
            largest = &camera;
    }
    if (!haveMain && largest)
        largest->type = mainCamera;
    for (CameraInfo& camera : cameras) {
        if (camera.type == 0)
            camera.type = colourCamera;
    }
}

TypeOverrides readTypeOverrides(const std::filesystem::path& path)
{
    std::error_code missing;
    if (path.empty() || !std::filesystem::exists(path, missing))
        return {};
    TypeOverrides overrides;
    try {
        libconfig::Config config;
        config.readFile(path.c_str());
        for (const libconfig::Setting& camera : config.lookup("cameras")) {
            const int type = camera["type"];
            if (type < mainCamera || type > infraredCamera) {
                complain(path, static_cast<int>(camera["type"].getSourceLine()), "type must be 1, 2 or 3");
                return {};
            }
            overrides[camera["usb"].c_str()] = type;
        }
    } catch (const libconfig::ParseException& wrong) {
        complain(path, wrong.getLine(), wrong.getError());
        return {};
    } catch (const libconfig::SettingException& wrong) {
        complain(path, 0, (std::string(wrong.getPath()) + ": " + wrong.what()).c_str());
        return {};
    } catch (const std::exception& wrong) {
        complain(path, 0, wrong.what());
        return {};
    }
    return overrides;
}

} // namespace mirvak

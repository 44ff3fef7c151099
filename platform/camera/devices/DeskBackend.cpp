#include "DeskBackend.h"

#include "DeskDevice.h"

#include <algorithm>
#include <cstdio>

namespace mirvak {
namespace {

/// The modes in the order of the camera's resolutions; empty when there is no picture to play.
std::vector<CameraMode> modesOf(const DeskConfig::Camera& camera, PictureSource& pictures)
{
    std::vector<CameraMode> modes;
    for (const DeskConfig::Size& size : camera.resolutions) {
        cv::Size pixels(size.width, size.height);
        if (size.isNative()) {
            const auto first = pictures.firstSize();
            if (!first)
                return {};
            pixels = *first;
        }
        modes.push_back({PixelFormat::Mjpeg, pixels.width, pixels.height});
    }
    return modes;
}

long long largestPixels(const DeskConfig::Camera& camera)
{
    PictureSource pictures(PictureSource::filesOf(camera.source));
    long long most = 0;
    for (const CameraMode& mode : modesOf(camera, pictures))
        most = std::max(most, static_cast<long long>(mode.width) * mode.height);
    return most;
}

} // namespace

DeskBackend::DeskBackend(DeskConfig desk) : desk_(std::move(desk))
{
    for (size_t i = 0; i < desk_.cameras.size(); ++i)
        unplugged_.push_back(std::make_shared<std::atomic<bool>>(false));
}

std::vector<CameraInfo> DeskBackend::enumerate()
{
    std::vector<CameraInfo> cameras;
    for (size_t i = 0; i < desk_.cameras.size(); ++i) {
        const DeskConfig::Camera& camera = desk_.cameras[i];
        *unplugged_[i] = false;
        CameraInfo info;
        info.name = camera.name;
        info.usbId = camera.usbId;
        info.type = camera.type;
        info.address = std::to_string(i);
        if (info.type == 0) // the pictures are looked at only when the type depends on their size
            info.largestPixels = largestPixels(camera);
        cameras.push_back(info);
    }
    return cameras;
}

std::unique_ptr<CameraDevice> DeskBackend::open(const CameraInfo& info)
{
    const size_t index = std::stoul(info.address);
    const DeskConfig::Camera& camera = desk_.cameras.at(index);
    const std::shared_ptr<std::atomic<bool>> unplugged = unplugged_[index];
    if (camera.failCreate || *unplugged) {
        std::fprintf(stderr, "virtual camera \"%s\" cannot be opened\n", camera.name.c_str());
        return nullptr;
    }
    PictureSource pictures(PictureSource::filesOf(camera.source));
    const std::vector<CameraMode> modes = modesOf(camera, pictures);
    if (pictures.count() == 0 || modes.empty()) {
        std::fprintf(stderr,
                     "virtual camera \"%s\": no picture to play in %s\n",
                     camera.name.c_str(),
                     camera.source.c_str());
        return nullptr;
    }
    return std::make_unique<DeskDevice>(camera, modes, [unplugged] { *unplugged = true; });
}

} // namespace mirvak

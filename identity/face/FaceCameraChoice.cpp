#include "FaceCameraChoice.h"

#include "FaceCameras.h"
#include "mirvakcamera.h"

namespace {

constexpr int colourType = 2, infraredType = 3;
constexpr int wantedArea = 640 * 480;

} // namespace

faceCameraChoice::Found faceCameraChoice::find(MirvakCamera& camera)
{
    Found found;
    const int count = camera.MirvakDevice_GetDevCount();
    for (int index = 0; index < count; ++index) {
        const int type = camera.MirvakDevice_GetCameraType(index);
        if (type == colourType)
            found.colour = index;
        else if (type == infraredType)
            found.infrared = index;
    }
    if (found.colour < 0)
        found.colour = found.infrared;
    return found;
}

int faceCameraChoice::resolution(MirvakCamera& camera, void* device)
{
    const auto area = [&](int index) {
        return camera.MirvakDevice_GetResolutionWidth(device, FaceCameras::format, index) *
               camera.MirvakDevice_GetResolutionHeight(device, FaceCameras::format, index);
    };
    const int count = camera.MirvakDevice_GetResolutionSize(device, FaceCameras::format);
    for (int index = 0; index < count; ++index)
        if (area(index) == wantedArea)
            return index;
    const int last = count - 1;
    return last > 0 && area(last) <= wantedArea ? last - 1 : last;
}

#include "CameraIdentities.h"

#include <algorithm>

namespace mirvak {
namespace {

std::string numbered(const CameraIdentities::Facts& camera)
{
    return camera.usbId + "/" + camera.serial + "/" + camera.function;
}

} // namespace

std::vector<std::string> CameraIdentities::name(const std::vector<Facts>& present)
{
    std::vector<std::string> names;
    for (const Facts& camera : present) {
        const std::string number = numbered(camera);
        Owner& owner = owners_.try_emplace(number, Owner{camera.port}).first->second;
        const bool isThere = std::any_of(present.begin(), present.end(), [&](const Facts& other) {
            return other.port == owner.port && numbered(other) == number;
        });
        owner.hasTwin = owner.hasTwin || (isThere && owner.port != camera.port);
        if (!owner.hasTwin)
            owner.port = camera.port; // it was plugged in elsewhere
        const bool goesByNumber = !camera.serial.empty() && owner.port == camera.port;
        names.push_back(goesByNumber ? number : number + "@" + camera.port);
    }
    return names;
}

} // namespace mirvak

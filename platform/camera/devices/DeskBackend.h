#pragma once

#include "CameraBackend.h"
#include "DeskConfig.h"

#include <atomic>

namespace mirvak {

/// The cameras of the virtual desk.
class DeskBackend : public CameraBackend
{
public:
    explicit DeskBackend(DeskConfig desk);

    /// Plugs every camera in again that has pulled itself out.
    std::vector<CameraInfo> enumerate() override;
    std::unique_ptr<CameraDevice> open(const CameraInfo& camera) override;

private:
    const DeskConfig desk_;
    // One flag a camera, true once it has unplugged itself; shared with the devices, which may live longer.
    std::vector<std::shared_ptr<std::atomic<bool>>> unplugged_;
};

} // namespace mirvak

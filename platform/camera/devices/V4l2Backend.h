#pragma once

#include "CameraBackend.h"

namespace mirvak {

/// The capture devices of the kernel under /dev/video*.
class V4l2Backend : public CameraBackend
{
public:
    /// One entry for each camera: nodes for metadata, for output and for formats that the library does not
    /// decode are left out, and so is a second colour or a second grey node of the same USB interface.
    std::vector<CameraInfo> enumerate() override;
    std::unique_ptr<CameraDevice> open(const CameraInfo& camera) override;
};

} // namespace mirvak

#pragma once

#include "CameraModel.h"
#include "Setup.h"

#include <map>
#include <string>

namespace lab {

/// What the camera sees. JPEG files come from a folder and are sent as they are; their names begin with the
/// size, "640x480_a.jpg", and those of one size are shown in name order, round and round.
class Pictures
{
public:
    explicit Pictures(const std::string& folder);

    /// The n-th compressed frame; empty when the folder has no file of this size.
    Bytes jpeg(FrameSize size, unsigned n) const;
    /// The n-th raw frame: luma (x + y + 4 n) modulo 256, U 150, V 100.
    static Bytes yuyv(FrameSize size, unsigned n);

private:
    std::map<std::string, std::vector<Bytes>> filesBySize_;
};

} // namespace lab

#pragma once

#include "CameraBackend.h"

namespace mirvak {

/// The modes of one camera as the two lists that the library's callers see: format 1 raw, format 2
/// compressed.
class CameraModes
{
public:
    /// Keeps the camera's order and one mode of each size: the first of the best format (colour before grey).
    explicit CameraModes(const std::vector<CameraMode>& all);

    /// The list of `format`; a camera with only one kind offers it under both. Empty for other numbers.
    const std::vector<CameraMode>& of(int format) const;
    /// Entry `index` of that list; null when there is none.
    const CameraMode* find(int format, int index) const;
    /// 2 when the compressed pictures are at least as large as the raw ones, else 1.
    int betterFormat() const;

private:
    std::vector<CameraMode> raw_;
    std::vector<CameraMode> compressed_;
};

} // namespace mirvak

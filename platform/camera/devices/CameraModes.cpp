#include "CameraModes.h"

#include <algorithm>

namespace mirvak {
namespace {

constexpr int rawFormat = 1;
constexpr int compressedFormat = 2;

bool isBetter(PixelFormat a, PixelFormat b)
{
    return isGrey(b) && !isGrey(a);
}

void addOnce(std::vector<CameraMode>& list, const CameraMode& mode)
{
    const auto same = std::find_if(list.begin(), list.end(), [&](const CameraMode& kept) {
        return kept.width == mode.width && kept.height == mode.height;
    });
    if (same == list.end())
        list.push_back(mode);
    else if (isBetter(mode.format, same->format))
        *same = mode;
}

long long largest(const std::vector<CameraMode>& list)
{
    long long most = 0;
    for (const CameraMode& mode : list)
        most = std::max(most, static_cast<long long>(mode.width) * mode.height);
    return most;
}

} // namespace

CameraModes::CameraModes(const std::vector<CameraMode>& all)
{
    for (const CameraMode& mode : all)
        addOnce(mode.format == PixelFormat::Mjpeg ? compressed_ : raw_, mode);
}

const std::vector<CameraMode>& CameraModes::of(int format) const
{
    static const std::vector<CameraMode> none;
    switch (format) {
    case rawFormat:
        return raw_.empty() ? compressed_ : raw_;
    case compressedFormat:
        return compressed_.empty() ? raw_ : compressed_;
    default:
        return none;
    }
}

const CameraMode* CameraModes::find(int format, int index) const
{
    const std::vector<CameraMode>& modes = of(format);
    return index >= 0 && static_cast<size_t>(index) < modes.size() ? &modes[static_cast<size_t>(index)]
                                                                   : nullptr;
}

int CameraModes::betterFormat() const
{
    return !compressed_.empty() && largest(compressed_) >= largest(raw_) ? compressedFormat : rawFormat;
}

} // namespace mirvak

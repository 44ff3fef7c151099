#include "OutlineDrawing.h"

#include "Outline.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

bool drawOutline(const cv::Mat& rgb, cv::Mat& target, unsigned colour, int width)
{
    const std::optional<Outline> outline = findOutline(rgb);
    if (!outline)
        return false;
    constexpr int thickest = 255;
    const cv::Scalar ink(colour >> 16 & 0xff, colour >> 8 & 0xff, colour & 0xff);
    for (size_t i = 0; i < 4; ++i)
        cv::line(target,
                 outline->corners[i],
                 outline->corners[(i + 1) % 4],
                 ink,
                 std::clamp(width, 1, thickest),
                 cv::LINE_AA);
    return true;
}

} // namespace mirvak

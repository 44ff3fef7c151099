#include "OutlineDrawing.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

void drawOutline(cv::Mat& rgb, const std::array<cv::Point2d, 4>& corners, unsigned colour, int width)
{
    constexpr int thickest = 255;
    const cv::Scalar ink(colour >> 16 & 0xff, colour >> 8 & 0xff, colour & 0xff);
    for (size_t i = 0; i < 4; ++i)
        cv::line(rgb, corners[i], corners[(i + 1) % 4], ink, std::clamp(width, 1, thickest), cv::LINE_AA);
}

} // namespace mirvak

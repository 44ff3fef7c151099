#include "FingerPixels.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

FingerPixels fitFinger(const cv::Mat& grey)
{
    const cv::Size room(fingerWidth, fingerHeight);
    const double scale = std::min(double(room.width) / grey.cols, double(room.height) / grey.rows);
    const cv::Size size(std::clamp(cvRound(grey.cols * scale), 1, room.width),
                        std::clamp(cvRound(grey.rows * scale), 1, room.height));
    FingerPixels pixels(static_cast<size_t>(room.area()));
    cv::Mat canvas(room, CV_8UC1, pixels.data());
    canvas.setTo(cv::Scalar(255));
    const cv::Point corner((room.width - size.width) / 2, (room.height - size.height) / 2);
    cv::Mat place = canvas(cv::Rect(corner, size));
    cv::resize(grey, place, size, 0, 0, scale < 1 ? cv::INTER_AREA : cv::INTER_LINEAR);
    return pixels;
}

} // namespace mirvak

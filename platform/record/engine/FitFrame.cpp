#include "FitFrame.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstring>

namespace mirvak {

void fitFrame(const uint8_t* rgb, int width, int height, const VideoFormat& format, uint8_t* frame)
{
    if (width == format.width && height == format.height) {
        std::memcpy(frame, rgb, format.frameBytes());
        return;
    }
    const double scale = std::min(double(format.width) / width, double(format.height) / height);
    const cv::Size fitted(std::clamp(cvRound(width * scale), 1, format.width),
                          std::clamp(cvRound(height * scale), 1, format.height));
    const cv::Point corner((format.width - fitted.width) / 2, (format.height - fitted.height) / 2);
    const cv::Mat picture(height, width, CV_8UC3, const_cast<uint8_t*>(rgb));
    cv::Mat whole(format.height, format.width, CV_8UC3, frame);
    whole.setTo(0);
    const int sampling = scale < 1 ? cv::INTER_AREA : cv::INTER_LINEAR;
    cv::resize(picture, whole(cv::Rect(corner, fitted)), fitted, 0, 0, sampling);
}

} // namespace mirvak

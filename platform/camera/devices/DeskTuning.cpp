#include "DeskTuning.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <cmath>

namespace mirvak {
namespace {

/// Two means in a row look like a lens that is off, at a cost that does not depend on how far.
void defocus(cv::Mat& rgb, double share)
{
    constexpr double widest = 0.05; // of the picture's width, with the focus off by its whole range
    const int side = 2 * static_cast<int>(std::lround(share * widest * rgb.cols)) + 1;
    for (int time = 0; side > 1 && time < 2; ++time)
        cv::blur(rgb, rgb, {side, side});
}

void sharpen(cv::Mat& rgb, double amount)
{
    cv::Mat soft;
    cv::GaussianBlur(rgb, soft, {}, 1.5);
    cv::addWeighted(rgb, 1 + amount, soft, -amount, 0, rgb);
}

/// Every grey level on its own, channel by channel.
void develop(cv::Mat& rgb, const DeskTuning& tuning)
{
    const std::array<double, 3> channels{tuning.red, 1.0, tuning.blue};
    cv::Mat table(1, 256, CV_8UC3);
    for (int level = 0; level < 256; ++level) {
        for (int channel = 0; channel < 3; ++channel) {
            const double lit = std::min(level * tuning.light * channels[static_cast<size_t>(channel)], 255.0);
            const double lifted = 255 * std::pow(lit / 255, 1 / tuning.gamma);
            table.at<cv::Vec3b>(0, level)[channel] =
                cv::saturate_cast<uchar>((lifted - 128) * tuning.contrast + 128 + tuning.brightness);
        }
    }
    cv::LUT(rgb, table, rgb);
}

void saturate(cv::Mat& rgb, double amount)
{
    const cv::Matx13d luma(0.299, 0.587, 0.114);
    const cv::Matx33d grey(cv::Matx31d(1, 1, 1) * luma);
    cv::transform(rgb, rgb, cv::Matx33d::eye() * amount + grey * (1 - amount));
}

} // namespace

void DeskTuning::apply(cv::Mat& rgb) const
{
    if (blur > 0)
        defocus(rgb, blur);
    if (sharpness != 0)
        sharpen(rgb, sharpness);
    develop(rgb, *this);
    if (saturation != 1)
        saturate(rgb, saturation);
}

} // namespace mirvak

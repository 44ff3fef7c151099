#include "Sharpen.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace mirvak {

void sharpen(cv::Mat& rgb, double amount, double noise)
{
    const int noiseFloor = static_cast<int>(std::lround(std::min(12.0, 1.5 * noise)));
    cv::Mat grey, soft;
    cv::cvtColor(rgb, grey, cv::COLOR_RGB2GRAY);
    cv::GaussianBlur(grey, soft, {0, 0}, 1.2);
    const int strength = static_cast<int>(amount * 256);
    cv::parallel_for_(cv::Range(0, rgb.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y) {
            const unsigned char* g = grey.ptr(y);
            const unsigned char* s = soft.ptr(y);
            unsigned char* pixel = rgb.ptr(y);
            for (int x = 0; x < rgb.cols; ++x, pixel += 3) {
                const int difference = g[x] - s[x];
                const int beyond = std::max(0, std::abs(difference) - noiseFloor);
                const int change = (difference < 0 ? -beyond : beyond) * strength / 256;
                for (int c = 0; c < 3; ++c)
                    pixel[c] = cv::saturate_cast<unsigned char>(pixel[c] + change);
            }
        }
    });
}

} // namespace mirvak

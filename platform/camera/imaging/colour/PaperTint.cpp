#include "PaperTint.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

Tint tintOf(const cv::Vec3f& colour)
{
    const float sum = std::max(1.0F, colour[0] + colour[1] + colour[2]);
    return {sum / 3, colour[0] / sum, colour[2] / sum};
}

Tint brightPaper(const cv::Mat& colours)
{
    std::vector<float> levels, reds, blues;
    for (int y = 0; y < colours.rows; y += 2) {
        for (int x = 0; x < colours.cols; x += 2)
            levels.push_back(tintOf(colours.at<cv::Vec3f>(y, x)).level);
    }
    const auto quantile = [](std::vector<float>& values, double share) {
        const auto at =
            values.begin() + static_cast<ptrdiff_t>(share * static_cast<double>(values.size() - 1));
        std::nth_element(values.begin(), at, values.end());
        return *at;
    };
    const float level = quantile(levels, 0.9);
    for (int y = 0; y < colours.rows; y += 2) {
        for (int x = 0; x < colours.cols; x += 2) {
            const Tint tint = tintOf(colours.at<cv::Vec3f>(y, x));
            if (tint.level > 0.9F * level) {
                reds.push_back(tint.red);
                blues.push_back(tint.blue);
            }
        }
    }
    return {level, quantile(reds, 0.5), quantile(blues, 0.5)};
}

bool isNear(const Tint& a, const Tint& b, double tolerance)
{
    return std::abs(a.red - b.red) < tolerance && std::abs(a.blue - b.blue) < tolerance;
}

void TintSurface::fit(const cv::Mat& colours, const cv::Mat& mask, const Tint& start)
{
    constexpr int rounds = 5, step = 4;
    constexpr double cutOff = 0.03; // of a share
    red_ = blue_ = Terms::zeros();
    red_(0) = start.red;
    blue_(0) = start.blue;
    for (int round = 0; round < rounds; ++round) {
        cv::Matx<double, 6, 6> normal = 1e-6 * cv::Matx<double, 6, 6>::eye();
        Terms toRed = Terms::zeros(), toBlue = Terms::zeros();
        for (int y = 0; y < mask.rows; y += step) {
            for (int x = 0; x < mask.cols; x += step) {
                if (!mask.at<unsigned char>(y, x))
                    continue;
                const Tint seen = tintOf(colours.at<cv::Vec3f>(y, x));
                const Terms at = termsAt(x, y);
                const double red = seen.red - at.dot(red_), blue = seen.blue - at.dot(blue_);
                const double far = (red * red + blue * blue) / (cutOff * cutOff);
                if (far >= 1)
                    continue;
                const double weight = (1 - far) * (1 - far);
                normal += weight * at * at.t();
                toRed += weight * red * at;
                toBlue += weight * blue * at;
            }
        }
        red_ += normal.solve(toRed, cv::DECOMP_CHOLESKY);
        blue_ += normal.solve(toBlue, cv::DECOMP_CHOLESKY);
    }
}

Tint TintSurface::at(int x, int y) const
{
    const Terms terms = termsAt(x, y);
    return {0, static_cast<float>(terms.dot(red_)), static_cast<float>(terms.dot(blue_))};
}

TintSurface::Terms TintSurface::termsAt(int x, int y) const
{
    const double u = 2.0 * x / size_.width - 1, v = 2.0 * y / size_.height - 1;
    return {1, u, v, u * u, u * v, v * v};
}

} // namespace mirvak

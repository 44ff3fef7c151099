#include "Background.h"

#include "PaperModel.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

// Darkens what is between, so that thin print becomes ink, and keeps both ends: pale colours stay pale.
// `share`: 0 nothing, 1 as for print.
std::array<unsigned char, 256> inkCurve(double share)
{
    constexpr double black = 0.06; // the darkest ink that a camera sees under its own light
    std::array<unsigned char, 256> curve{};
    for (size_t i = 0; i < curve.size(); ++i) {
        const double x = std::pow(static_cast<double>(i) / 255, 1.25);
        const double s = x * x * (3 - 2 * x);
        const double y = (0.45 * x + 0.55 * s - black) / (1 - black);
        curve[i] = cv::saturate_cast<unsigned char>(share * 255 * std::max(0.0, y) +
                                                    (1 - share) * static_cast<double>(i));
    }
    return curve;
}

// Unsharp masking of the brightness alone, so that no coloured fringes come up; differences that noise could
// have made stay as they are.
void sharpen(cv::Mat& rgb, double amount, int noiseFloor)
{
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

// Paper white, and strokes as deep and sharp again as before the lens; `depth` and `sharpness` 0 to 1.
void clean(Image& image, double depth, double sharpness)
{
    const PaperModel model(image.pixels);
    Flattening how;
    how.curve = inkCurve(depth);
    flatten(image.pixels, model, how);
    sharpen(image.pixels, sharpness, static_cast<int>(std::lround(std::min(12.0, 1.5 * model.noise()))));
}

} // namespace

void removeBackground(Image& image)
{
    clean(image, 0.4, 0.5);
}

void processDocument(Image& image)
{
    clean(image, 1, 0.7);
}

} // namespace mirvak

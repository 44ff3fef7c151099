#include "Enhance.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr double darkShare = 0.001, brightShare = 0.01; // of the pixels that may become black or white
constexpr double mostGain = 2.2;                        // a nearly black frame stays dark and free of noise
constexpr double saturation = 1.3;
constexpr double paleTint = 0.12, fullTint = 0.35; // of a colour's span: paper keeps the tint that it has

using Curve = std::array<int, 256>;

struct Levels
{
    double black = 0, white = 255;
};

// Between brightness and the strongest channel, so that a red seal counts as the bright thing that it is and
// does not sink into black.
int valueOf(const unsigned char* p)
{
    const int most = std::max({p[0], p[1], p[2]});
    return (2 * most + (p[0] + 2 * p[1] + p[2]) / 2) / 4;
}

Levels levelsOf(const cv::Mat& rgb)
{
    std::array<int, 256> histogram{};
    int count = 0;
    for (int y = 0; y < rgb.rows; y += 3) {
        const unsigned char* p = rgb.ptr(y);
        for (int x = 0; x < rgb.cols; x += 3, p += 9, ++count)
            ++histogram[static_cast<size_t>(valueOf(p))];
    }
    size_t dark = 0, bright = 255;
    for (int below = histogram[0]; dark < 255 && below < darkShare * count;)
        below += histogram[++dark];
    for (int above = histogram[255]; bright > 0 && above < brightShare * count;)
        above += histogram[--bright];
    return {static_cast<double>(dark), static_cast<double>(bright)};
}

// From old to new brightness: a stretch, bent a little towards contrast in the middle.
Curve brightnessCurve(const Levels& levels)
{
    const double range = std::max({1.0, levels.white - levels.black, 255 / mostGain});
    const double black = std::min(levels.black, 45.0); // a picture without any dark place is not given one
    Curve curve{};
    for (int i = 0; i < 256; ++i) {
        const double x = std::clamp((i - black) / range, 0.0, 1.0);
        const double s = x * x * (3 - 2 * x);
        curve[static_cast<size_t>(i)] = static_cast<int>(std::lround(255 * (0.75 * x + 0.25 * s)));
    }
    return curve;
}

// Scales all channels by one factor, then moves them apart, but never out of their range: the most that all
// three can take.
void colourPixel(unsigned char* p, const Curve& curve)
{
    const int value = valueOf(p);
    if (value == 0)
        return;
    const double gain = std::min(mostGain, static_cast<double>(curve[static_cast<size_t>(value)]) / value);
    const double grey = gain * (p[0] + 2 * p[1] + p[2]) / 4;
    const int most = std::max({p[0], p[1], p[2]}), least = std::min({p[0], p[1], p[2]});
    const double tint = static_cast<double>(most - least) / most;
    double factor = 1 + (saturation - 1) * std::clamp((tint - paleTint) / (fullTint - paleTint), 0.0, 1.0);
    for (int c = 0; c < 3; ++c) {
        const double away = gain * p[c] - grey;
        if (away > 0)
            factor = std::min(factor, std::max(1.0, (255 - grey) / away));
        else if (away < 0)
            factor = std::min(factor, std::max(1.0, grey / -away));
    }
    for (int c = 0; c < 3; ++c)
        p[c] = cv::saturate_cast<unsigned char>(grey + factor * (gain * p[c] - grey));
}

} // namespace

void enhanceColour(Image& image)
{
    const Curve curve = brightnessCurve(levelsOf(image.pixels));
    cv::parallel_for_(cv::Range(0, image.pixels.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y) {
            unsigned char* p = image.pixels.ptr(y);
            for (int x = 0; x < image.pixels.cols; ++x, p += 3)
                colourPixel(p, curve);
        }
    });
}

} // namespace mirvak

#include "Background.h"

#include "PaperModel.h"
#include "Sharpen.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

// Darkens what is between, so that thin print becomes ink, and keeps both ends: pale colours stay pale.
// `share`: 0 nothing, 1 as for print.
std::array<unsigned char, 256> inkCurve(double share)
{
    constexpr double black = 0.06;   // the darkest ink that a camera sees under its own light
    constexpr double exponent = 1.4; // a lens mixes light: half of a stroke's light is its edge
    std::array<unsigned char, 256> curve{};
    for (size_t i = 0; i < curve.size(); ++i) {
        const double x = std::pow(static_cast<double>(i) / 255, exponent);
        const double s = x * x * (3 - 2 * x);
        const double y = (0.45 * x + 0.55 * s - black) / (1 - black);
        curve[i] = cv::saturate_cast<unsigned char>(share * 255 * std::max(0.0, y) +
                                                    (1 - share) * static_cast<double>(i));
    }
    return curve;
}

// Paper white, and strokes as deep and sharp again as before the lens; `depth` and `sharpness` 0 to 1.
void clean(Image& image, double depth, double sharpness)
{
    const PaperModel model(image.pixels);
    Flattening how;
    how.curve = inkCurve(depth);
    flatten(image.pixels, model, how);
    sharpen(image.pixels, sharpness, model.noise());
}

} // namespace

void removeBackground(Image& image)
{
    clean(image, 0.6, 0.7);
}

void processDocument(Image& image)
{
    clean(image, 0.9, 0.7);
}

} // namespace mirvak

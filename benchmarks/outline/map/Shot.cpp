#include "Shot.h"

#include "JpegCodec.h"

namespace sheetmap {

namespace {

double ramp(double value)
{
    return 1 / (1 + std::exp(-value));
}

template <class Factor> void shade(cv::Mat& picture, Factor factor)
{
    picture.forEach<Colour>([&](Colour& pixel, const int* at) {
        pixel *= static_cast<float>(factor(static_cast<double>(at[1]) / picture.cols - 0.5,
                                           static_cast<double>(at[0]) / picture.rows - 0.5));
    });
}

/// Of a lamp's arm, of the person, of a window's frame: its edge is sharp or soft.
void castShadow(cv::Mat& picture, Chance& chance)
{
    const double angle = chance.between(0, 2 * CV_PI), soft = chance.spread(0.003, 0.2),
                 depth = chance.between(0.1, 0.7), offset = chance.between(-0.4, 0.4),
                 wide = chance.happens(0.5) ? 10 : chance.between(0.03, 0.3);
    shade(picture, [&](double x, double y) {
        const double d = x * std::cos(angle) + y * std::sin(angle) - offset;
        return 1 - depth * ramp(d / soft) * ramp((wide - d) / soft);
    });
}

void reflectLamp(cv::Mat& picture, Chance& chance)
{
    const double atX = chance.between(-0.5, 0.5), atY = chance.between(-0.5, 0.5),
                 a = chance.spread(0.02, 0.25), b = chance.spread(0.02, 0.25),
                 angle = chance.between(0, CV_PI), strength = chance.spread(20, 400);
    picture.forEach<Colour>([&](Colour& pixel, const int* place) {
        const double x = static_cast<double>(place[1]) / picture.cols - 0.5 - atX,
                     y = static_cast<double>(place[0]) / picture.rows - 0.5 - atY;
        const double u = (x * std::cos(angle) + y * std::sin(angle)) / a,
                     v = (y * std::cos(angle) - x * std::sin(angle)) / b;
        pixel += Colour::all(static_cast<float>(strength * std::exp(-0.5 * (u * u + v * v))));
    });
}

} // namespace

void castLight(cv::Mat& picture, Chance& chance)
{
    const double angle = chance.between(0, 2 * CV_PI), fall = chance.between(0, 0.5),
                 vignette = chance.between(0, 0.6), exposure = chance.between(0.65, 1.15);
    shade(picture, [&](double x, double y) {
        return exposure * (1 - fall * (x * std::cos(angle) + y * std::sin(angle))) *
               (1 - vignette * (x * x + y * y));
    });
    for (int i = 0; i < 2 && chance.happens(0.4); ++i)
        castShadow(picture, chance);
    if (chance.happens(0.2))
        reflectLamp(picture, chance);
    Colour cast;
    for (int c = 0; c < 3; ++c)
        cast[c] = static_cast<float>(chance.between(0.88, 1.12));
    picture.forEach<Colour>([&](Colour& pixel, const int*) { pixel = pixel.mul(cast); });
}

cv::Mat photograph(const cv::Mat& picture, Chance& chance)
{
    cv::Mat seen = picture.clone();
    if (chance.happens(0.7)) {
        const double blur = chance.between(0.2, 1.5);
        cv::GaussianBlur(seen, seen, {}, blur);
    }
    cv::Mat noise(seen.size(), CV_32FC3);
    chance.generator().fill(noise, cv::RNG::NORMAL, 0, chance.between(0, 6));
    seen += noise;
    mirvak::Image developed;
    seen.convertTo(developed.pixels, CV_8UC3);
    if (chance.happens(0.5))
        return developed.pixels;
    return mirvak::decodeJpeg(mirvak::encodeJpeg(developed, 40 + chance.below(55)))->pixels;
}

} // namespace sheetmap

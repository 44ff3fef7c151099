#include "Seal.h"

#include "PaperModel.h"
#include "Sharpen.h"

#include <opencv2/core.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

// Levels by which the seal's own channel stands out of the others: below is paper and black ink, above is
// seal.
constexpr int leastTint = 14, fullTint = 28;
constexpr double tintNoises = 4;  // deviations of the noise, of two channels together
constexpr double sharpness = 0.6; // a little less than that of documents

struct Ink
{
    std::array<double, 3> colour;
};

struct Channels
{
    size_t own;                   ///< in which the seal is as bright as paper, and text is not
    std::array<size_t, 2> others; ///< in which the seal is dark
};

Channels channelsOf(SealColour colour)
{
    return colour == SealColour::red ? Channels{0, {1, 2}} : Channels{2, {0, 1}};
}

// A blue stamp lets green through nearly as a violet one does not: its red channel decides.
int tintOf(const unsigned char* p, const Channels& channels, SealColour colour)
{
    const int a = p[channels.others[0]], b = p[channels.others[1]];
    const int other = colour == SealColour::red ? std::max(a, b) : (3 * a + b) / 4;
    return p[channels.own] - other;
}

// The stamp's own ink: mean of its most coloured pixels, pure and strong.
Ink inkOf(const cv::Mat& rgb, const Channels& channels, SealColour colour)
{
    std::array<std::array<double, 4>, 256> sums{};
    double total = 0;
    for (int y = 0; y < rgb.rows; y += 2) {
        const unsigned char* p = rgb.ptr(y);
        for (int x = 0; x < rgb.cols; x += 2, p += 6) {
            const int tint = tintOf(p, channels, colour);
            if (tint < fullTint)
                continue;
            auto& sum = sums[static_cast<size_t>(tint)];
            for (size_t c = 0; c < 3; ++c)
                sum[c] += p[c];
            sum[3] += 1;
            total += 1;
        }
    }
    std::array<double, 4> most{};
    for (size_t tint = sums.size(); tint-- > 0 && most[3] < 0.3 * total;) {
        for (size_t i = 0; i < 4; ++i)
            most[i] += sums[tint][i];
    }
    if (most[3] < 50) // no seal to learn from
        return colour == SealColour::red ? Ink{{215, 25, 35}} : Ink{{25, 50, 190}};
    Ink ink{};
    for (size_t c = 0; c < 3; ++c)
        ink.colour[c] = most[c] / most[3];
    const double own = std::clamp(ink.colour[channels.own], 185.0, 225.0),
                 seen = std::max(1.0, ink.colour[channels.own]);
    for (const size_t c : channels.others)
        ink.colour[c] = std::max(0.0, own - 1.45 * (seen - ink.colour[c]) * own / seen);
    ink.colour[channels.own] = own;
    return ink;
}

std::array<unsigned char, 256> textCurve()
{
    std::array<unsigned char, 256> curve{};
    for (int i = 0; i < 256; ++i) {
        const double x = std::pow(std::clamp((i - 40) / 200.0, 0.0, 1.0), 1.5);
        curve[static_cast<size_t>(i)] = cv::saturate_cast<unsigned char>(255 * x * x * (3 - 2 * x));
    }
    return curve;
}

// A pixel of stamp: text, which the seal's own channel shows, over paper covered with ink.
void inkPixel(unsigned char* p, const Ink& ink, double cover, double text)
{
    const double strong = 1 - (1 - cover) * (1 - cover) * (1 - cover);
    for (size_t c = 0; c < 3; ++c)
        p[c] = cv::saturate_cast<unsigned char>(text / 255 * (255 * (1 - strong) + ink.colour[c] * strong));
}

class SealPainter
{
public:
    /// `noise`: standard deviation in evened light, levels
    SealPainter(const cv::Mat& rgb, SealColour colour, double noise)
        : colour_(colour), noiseTint_(tintNoises * noise), channels_(channelsOf(colour)),
          ink_(inkOf(rgb, channels_, colour)), curve_(textCurve()),
          depth_(ink_.colour[channels_.own] -
                 0.5 * (ink_.colour[channels_.others[0]] + ink_.colour[channels_.others[1]])),
          inkTint_(std::max(60.0, depth_))
    {
    }

    void paint(unsigned char* p) const
    {
        const int tint = tintOf(p, channels_, colour_);
        // The tint counts against the light that the pixel has left: over black text both are small.
        const double own = std::max<int>(p[channels_.own], 60);
        const double relative = tint * 255.0 / own;
        const double least = std::max<double>(leastTint, noiseTint_ * 255 / own);
        if (relative <= least) { // most of a page
            p[0] = curve_[p[0]];
            p[1] = curve_[p[1]];
            p[2] = curve_[p[2]];
            return;
        }
        const double seal = std::clamp((relative - least) / (fullTint - leastTint), 0.0, 1.0);
        std::array<unsigned char, 3> sealed{};
        inkPixel(sealed.data(),
                 inkAt(p),
                 std::clamp(1.6 * relative / inkTint_, 0.0, 1.0),
                 curve_[p[channels_.own]]);
        for (int c = 0; c < 3; ++c)
            p[c] = cv::saturate_cast<unsigned char>(sealed[static_cast<size_t>(c)] * seal +
                                                    curve_[p[c]] * (1 - seal));
    }

private:
    // As strong as the stamp's, but of the pixel's own hue: several stamps may lie on a page.
    Ink inkAt(const unsigned char* p) const
    {
        const double own = p[channels_.own];
        const std::array<double, 2> missing{own - p[channels_.others[0]], own - p[channels_.others[1]]};
        const double mean = std::max(1.0, (missing[0] + missing[1]) / 2);
        Ink ink = ink_;
        for (size_t i = 0; i < 2; ++i)
            ink.colour[channels_.others[i]] =
                std::max(0.0, ink_.colour[channels_.own] - depth_ * std::clamp(missing[i] / mean, 0.0, 2.0));
        return ink;
    }

    SealColour colour_;
    double noiseTint_; ///< levels: smaller differences of channels may be noise
    Channels channels_;
    Ink ink_;
    std::array<unsigned char, 256> curve_;
    double depth_; ///< by how much the ink darkens the other channels, in the mean
    double inkTint_;
};

} // namespace

void strengthenSeal(Image& image, SealColour colour)
{
    const PaperModel model(image.pixels);
    flatten(image.pixels, model, Flattening());
    sharpen(image.pixels, sharpness, model.noise());
    const double light = std::max<double>(PaperModel::darkest, cv::mean(model.paper())[1]);
    const SealPainter painter(image.pixels, colour, model.noise() * 255 / light);
    cv::parallel_for_(cv::Range(0, image.pixels.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y) {
            unsigned char* p = image.pixels.ptr(y);
            for (int x = 0; x < image.pixels.cols; ++x, p += 3)
                painter.paint(p);
        }
    });
}

} // namespace mirvak

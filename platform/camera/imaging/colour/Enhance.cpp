#include "Enhance.h"

#include "PaperModel.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>

namespace mirvak {

namespace {

constexpr double darkShare = 0.001; // of the pixels may become darker than print
constexpr int printLevel = 28;      // of black print on white paper
constexpr int mostHaze = 45;        // levels; a picture without any dark place is not given one
constexpr int saturation = 269;     // of 256: a little more than what lies there

// How bright the darkest places are.
int darkestOf(const cv::Mat& rgb)
{
    std::array<int, 256> histogram{};
    int count = 0;
    for (int y = 0; y < rgb.rows; y += 3) {
        const unsigned char* p = rgb.ptr(y);
        for (int x = 0; x < rgb.cols; x += 3, p += 9, ++count)
            ++histogram[static_cast<size_t>(std::max({p[0], p[1], p[2]}))];
    }
    size_t dark = 0;
    for (int below = histogram[0]; dark < 255 && below < darkShare * count;)
        below += histogram[++dark];
    return static_cast<int>(dark);
}

// Takes the haze of stray light away: black becomes as dark as print is, white stays.
std::array<unsigned char, 256> clearing(int darkest)
{
    const int haze = std::clamp(darkest - printLevel, 0, mostHaze);
    std::array<unsigned char, 256> curve{};
    for (int i = 0; i < 256; ++i)
        curve[static_cast<size_t>(i)] = cv::saturate_cast<unsigned char>((i - haze) * 255.0 / (255 - haze));
    return curve;
}

void enliven(unsigned char* p, const std::array<unsigned char, 256>& curve)
{
    const std::array<int, 3> colour{curve[p[0]], curve[p[1]], curve[p[2]]};
    const int grey = (colour[0] + 2 * colour[1] + colour[2]) / 4;
    for (size_t c = 0; c < 3; ++c)
        p[c] = cv::saturate_cast<unsigned char>(grey + (saturation * (colour[c] - grey)) / 256);
}

} // namespace

void enhanceColour(Image& image)
{
    const PaperModel model(image.pixels);
    if (cv::mean(model.paper())[1] <= PaperModel::darkest)
        return; // as with the cover on the lens: nothing but noise
    Flattening how;
    how.whiteFrom = 0.97;
    how.noiseMargin = 2;
    flatten(image.pixels, model, how);
    const std::array<unsigned char, 256> curve = clearing(darkestOf(image.pixels));
    cv::parallel_for_(cv::Range(0, image.pixels.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y) {
            unsigned char* p = image.pixels.ptr(y);
            for (int x = 0; x < image.pixels.cols; ++x, p += 3)
                enliven(p, curve);
        }
    });
}

} // namespace mirvak

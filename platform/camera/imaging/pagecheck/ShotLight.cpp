#include "ShotLight.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int patchSide = 14;       // pixels
constexpr double quietest = 0.25;   // of the places: texture of the paper and print are no noise
constexpr double brightest = 0.98;  // of the picture's cells lie below
constexpr double inkAndPaper = 0.9; // of the places' brightest pixels lie below
constexpr double dimLevel = 80;     // a twelfth of white's light
constexpr double grainyShare = 0.05;
constexpr double holding = 0.85; // what is told stays until it is clearly over

float noiseAt(const cv::Mat& rgb, int left, int top, int side)
{
    const auto green = [&](int x, int y) {
        return static_cast<int>(rgb.ptr(top + y)[ptrdiff_t{3} * (left + x) + 1]);
    };
    long long sum = 0;
    for (int y = 1; y + 1 < side; ++y) {
        for (int x = 1; x + 1 < side; ++x)
            sum += std::abs(green(x - 1, y - 1) - 2 * green(x, y - 1) + green(x + 1, y - 1) -
                            2 * green(x - 1, y) + 4 * green(x, y) - 2 * green(x + 1, y) +
                            green(x - 1, y + 1) - 2 * green(x, y + 1) + green(x + 1, y + 1));
    }
    // The operator multiplies the noise by 6; sqrt(pi / 2) makes a mean size a standard deviation.
    constexpr double factor = 1.2533 / 6;
    const int count = (side - 2) * (side - 2);
    return count > 0 ? static_cast<float>(factor * static_cast<double>(sum) / count) : 0;
}

/// Nearly the brightest there is, print on the page included.
double brightLevel(const ShotLook& look)
{
    std::vector<float> cells(look.cells().begin<unsigned char>(), look.cells().end<unsigned char>());
    std::vector<float> print;
    for (const cv::Point& place : look.places(true)) {
        const cv::Point2d middle = look.toPicture(place);
        float most = 0;
        for (int step = -patchSide; step <= patchSide; ++step)
            most = std::max({most,
                             look.brightnessAt(middle + cv::Point2d(step, 0)),
                             look.brightnessAt(middle + cv::Point2d(0, step))});
        print.push_back(most);
    }
    return std::max(quantile(cells, brightest), quantile(print, inkAndPaper));
}

} // namespace

double noiseOf(const ShotLook& look)
{
    const cv::Mat& rgb = look.picture();
    const int side = std::min({patchSide, rgb.cols, rgb.rows});
    std::vector<float> noise;
    for (const cv::Point& place : look.places(false)) {
        const cv::Point2d middle = look.toPicture(place);
        const int left = std::clamp(cvRound(middle.x) - side / 2, 0, rgb.cols - side);
        const int top = std::clamp(cvRound(middle.y) - side / 2, 0, rgb.rows - side);
        noise.push_back(noiseAt(rgb, left, top, side));
    }
    return quantile(noise, quietest);
}

bool isTooDark(const ShotLook& look, double noise, bool alreadySo)
{
    const double level = brightLevel(look);
    const double limit = alreadySo ? dimLevel / holding : dimLevel;
    const double grain = alreadySo ? grainyShare * holding : grainyShare;
    return level < limit || noise > grain * level;
}

} // namespace mirvak

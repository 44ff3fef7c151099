#include "Sharpness.h"

#include "EdgeRise.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int profilesPerSide = 12;
constexpr int besideProfile = 2;        // parallel ones on either side, whose mean has less noise
constexpr double profileReach = 0.0125; // of the longest side: an outline may be off by some pixels
constexpr int leastReach = 12;          // pixels
constexpr int patchSide = 48;           // pixels: several letters of small print
constexpr int patchStep = 4;            // rows and columns, each the mean of three
constexpr size_t leastPlaces = 6;       // with edges in one direction, for that to have a say
constexpr double sharpest = 0.25;       // of the edges and of the places: others are soft by themselves
constexpr float leastLevels = 24, leastOverNoise = 10;

} // namespace

double blurLimit(int longestSide)
{
    constexpr double leastPixels = 4.5, share = 0.0018;
    return std::max(leastPixels, share * longestSide);
}

std::optional<double> Sharpness::measure(const ShotLook& look, double noise)
{
    for (size_t i = 0; i < places_.size(); ++i) {
        here_[i].clear();
        places_[i].clear();
    }
    const float leastContrast = std::max(leastLevels, leastOverNoise * static_cast<float>(noise));
    lookAtSides(look, leastContrast);
    lookAtPrint(look, leastContrast);
    std::optional<double> widest;
    for (auto& widths : places_) {
        if (widths.size() >= leastPlaces)
            widest = std::max(widest.value_or(0), static_cast<double>(quantile(widths, sharpest)));
    }
    return widest;
}

/// Places count alike, however many edges each has: a soft shadow or a reflection fills a few of them.
void Sharpness::closePlace()
{
    for (size_t i = 0; i < here_.size(); ++i) {
        if (!here_[i].empty())
            places_[i].push_back(quantile(here_[i], sharpest));
        here_[i].clear();
    }
}

void Sharpness::lookAtSides(const ShotLook& look, float leastContrast)
{
    const int reach = std::max(leastReach, cvRound(profileReach * look.longestSide()));
    const cv::Rect2d inner(reach, reach, look.picture().cols - 2 * reach, look.picture().rows - 2 * reach);
    const auto& corners = look.page().corners;
    for (size_t side = 0; side < corners.size(); ++side) {
        const cv::Point2d from = corners[side], along = corners[(side + 1) % corners.size()] - from;
        const double length = cv::norm(along);
        if (length < 1)
            continue;
        const cv::Point2d unit = along / length, across(-unit.y, unit.x);
        auto& widths = here_[std::abs(across.x) > std::abs(across.y) ? 0 : 1];
        for (int i = 0; i < profilesPerSide; ++i) {
            const cv::Point2d middle = from + along * ((i + 1.0) / (profilesPerSide + 1));
            if (!inner.contains(middle))
                continue;
            line_.clear();
            for (int step = -reach; step <= reach; ++step) {
                float sum = 0;
                for (int beside = -besideProfile; beside <= besideProfile; ++beside)
                    sum += look.brightnessAt(middle + across * step + unit * beside);
                line_.push_back(sum / (2 * besideProfile + 1));
            }
            findEdgeRises(line_, leastContrast, widths);
            closePlace();
        }
    }
}

void Sharpness::lookAtPrint(const ShotLook& look, float leastContrast)
{
    const cv::Mat& rgb = look.picture();
    const int side = std::min({patchSide, rgb.cols, rgb.rows});
    float patch[patchSide][patchSide];
    for (const cv::Point& place : look.places(true)) {
        const cv::Point2d middle = look.toPicture(place);
        const int left = std::clamp(cvRound(middle.x) - side / 2, 0, rgb.cols - side);
        const int top = std::clamp(cvRound(middle.y) - side / 2, 0, rgb.rows - side);
        for (int y = 0; y < side; ++y) {
            const auto* p = rgb.ptr(top + y) + ptrdiff_t{3} * left;
            for (int x = 0; x < side; ++x, p += 3)
                patch[y][x] = static_cast<float>(p[0] + 2 * p[1] + p[2]) / 4;
        }
        for (int i = 1; i + 1 < side; i += patchStep) {
            line_.clear();
            for (int x = 0; x < side; ++x)
                line_.push_back((patch[i - 1][x] + patch[i][x] + patch[i + 1][x]) / 3);
            findEdgeRises(line_, leastContrast, here_[0]);
            line_.clear();
            for (int y = 0; y < side; ++y)
                line_.push_back((patch[y][i - 1] + patch[y][i] + patch[y][i + 1]) / 3);
            findEdgeRises(line_, leastContrast, here_[1]);
        }
        closePlace();
    }
}

} // namespace mirvak

#include "Wholeness.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr double borderShare = 0.004; // of the longest side: how well an outline knows its place
constexpr double insideShare = 0.12;  // of the way to the page's middle
constexpr int places = 24;            // along a side
constexpr int spot = 4;               // pixels on either side of a place
constexpr double alikeShare =
    0.1; // of its brightness, each channel; light falls off by less on so short a way
constexpr double alikeLevels = 3; // noise
constexpr int alikePlaces = 8;    // of them: print and pictures that run out of the picture differ

using Colour = std::array<int, 3>;

/// The brightest of each channel around a place: paper, also between the letters.
Colour paperAt(const cv::Mat& rgb, const cv::Point2d& place)
{
    const int x = std::clamp(cvRound(place.x), 0, rgb.cols - 1),
              y = std::clamp(cvRound(place.y), 0, rgb.rows - 1);
    Colour most{};
    for (int row = std::max(0, y - spot); row <= std::min(rgb.rows - 1, y + spot); ++row) {
        const auto* p = rgb.ptr(row);
        for (int column = std::max(0, x - spot); column <= std::min(rgb.cols - 1, x + spot); ++column) {
            for (size_t c = 0; c < most.size(); ++c)
                most[c] = std::max<int>(most[c], p[3 * column + static_cast<int>(c)]);
        }
    }
    return most;
}

bool goesOnToBorder(const cv::Mat& rgb,
                    const cv::Point2d& from,
                    const cv::Point2d& to,
                    const cv::Point2d& middle)
{
    int alike = 0;
    for (int i = 0; i < places; ++i) {
        const cv::Point2d atBorder = from + (to - from) * ((i + 0.5) / places);
        const Colour there = paperAt(rgb, atBorder);
        const Colour inside = paperAt(rgb, atBorder + insideShare * (middle - atBorder));
        int most = 0, bright = 0;
        for (size_t c = 0; c < there.size(); ++c) {
            most = std::max(most, std::abs(there[c] - inside[c]));
            bright = std::max(bright, inside[c]);
        }
        alike += most <= alikeLevels + alikeShare * bright ? 1 : 0;
    }
    return alike >= alikePlaces;
}

} // namespace

Wholeness wholenessOf(const cv::Mat& rgb, const Outline& page)
{
    const auto& corners = page.corners;
    const double tolerance = std::max(1.0, borderShare * std::max(rgb.cols, rgb.rows));
    const cv::Point2d middle = 0.25 * (corners[0] + corners[1] + corners[2] + corners[3]);
    Wholeness result = Wholeness::whole;
    for (size_t i = 0; i < corners.size(); ++i) {
        const cv::Point2d &corner = corners[i], &next = corners[(i + 1) % corners.size()];
        if (corner.x < -tolerance || corner.y < -tolerance || corner.x > rgb.cols - 1 + tolerance ||
            corner.y > rgb.rows - 1 + tolerance)
            return Wholeness::leavesPicture;
        if (!liesOnBorder(corner, next, rgb.size(), tolerance))
            continue;
        if (goesOnToBorder(rgb, corner, next, middle))
            return Wholeness::leavesPicture;
        result = Wholeness::doubtful;
    }
    return result;
}

} // namespace mirvak

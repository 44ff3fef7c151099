#include "GlyphFeatures.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr int side = 64, room = 56; // px: the normalised picture, the longer side of the character in it
constexpr int grid = 8, directions = 8;
constexpr int cells = 16;        // each way, in which slopes are summed up first
constexpr double spread = 5.5;   // px, standard deviation: what one place of the grid sees
constexpr double inkShare = 0.3; // of the darkest ink: what counts as a stroke's extent
constexpr double darkest = 0.99; // share of the pixels that are lighter than the darkest ink
constexpr int leastInk = 24;     // levels: less is grain

// The level of full ink: a single dark pixel is no measure of it.
int fullInk(const cv::Mat& ink)
{
    std::array<int, 256> counts{};
    int inked = 0;
    for (int y = 0; y < ink.rows; ++y) {
        const unsigned char* row = ink.ptr(y);
        for (int x = 0; x < ink.cols; ++x) {
            ++counts[row[x]];
            inked += row[x] >= leastInk ? 1 : 0;
        }
    }
    int level = 255, above = 0;
    const int few = static_cast<int>((1 - darkest) * inked);
    while (level > 0 && (above += counts[static_cast<size_t>(level)]) <= few)
        --level;
    return level;
}

// The character fills the square in its longer direction; the other one is kept long, too, the more so the
// squarer it is, since fonts differ in this.
cv::Mat normalised(const cv::Mat& ink)
{
    const int longer = std::max(ink.cols, ink.rows), shorter = std::min(ink.cols, ink.rows);
    const double aspect = std::sqrt(std::sin(CV_PI / 2 * shorter / longer));
    const int across = std::max(2, cvRound(room * aspect));
    const cv::Size size = ink.cols >= ink.rows ? cv::Size(room, across) : cv::Size(across, room);
    cv::Mat fitted, square(side, side, CV_32F, cv::Scalar(0));
    // Averages where it becomes smaller, else fine strokes would fall between the samples.
    cv::resize(ink, fitted, size, 0, 0, longer > room ? cv::INTER_AREA : cv::INTER_LINEAR);
    fitted.convertTo(square(cv::Rect({(side - size.width) / 2, (side - size.height) / 2}, size)), CV_32F);
    return square;
}

/// Strengths of slope in each direction, summed up in cells.
using Slopes = std::array<cv::Matx<float, cells, cells>, directions>;

// Each slope goes to the two directions beside it, by the parallelogram rule.
Slopes slopesOf(const cv::Mat& square)
{
    cv::Mat dx, dy;
    cv::Sobel(square, dx, CV_32F, 1, 0);
    cv::Sobel(square, dy, CV_32F, 0, 1);
    Slopes slopes{};
    for (int y = 0; y < side; ++y) {
        const auto *gx = dx.ptr<float>(y), *gy = dy.ptr<float>(y);
        for (int x = 0; x < side; ++x) {
            const float ax = std::abs(gx[x]), ay = std::abs(gy[x]);
            if (ax + ay == 0)
                continue;
            // 0 to 7, clockwise from +x: an axis and the diagonal beside it share the slope.
            const int axis = ax >= ay ? (gx[x] >= 0 ? 0 : 4) : (gy[x] >= 0 ? 2 : 6);
            const int diagonal = gx[x] >= 0 ? (gy[x] >= 0 ? 1 : 7) : (gy[x] >= 0 ? 3 : 5);
            const int row = y * cells / side, column = x * cells / side;
            slopes[static_cast<size_t>(axis)](row, column) += std::abs(ax - ay);
            slopes[static_cast<size_t>(diagonal)](row, column) +=
                static_cast<float>(M_SQRT2) * std::min(ax, ay);
        }
    }
    return slopes;
}

// For each place of the grid: how much of each row, or column, of cells it sees.
const cv::Matx<float, grid, cells>& gridWeights()
{
    static const auto weights = [] {
        cv::Matx<float, grid, cells> w;
        for (int g = 0; g < grid; ++g) {
            for (int c = 0; c < cells; ++c) {
                const double off = ((c + 0.5) / cells - (g + 0.5) / grid) * side / spread;
                w(g, c) = static_cast<float>(std::exp(-off * off / 2));
            }
        }
        return w;
    }();
    return weights;
}

} // namespace

cv::Mat glyphFeaturesOf(const cv::Mat& grey)
{
    if (grey.empty())
        return {};
    cv::Mat ink = 255 - grey;
    const int full = fullInk(ink);
    if (full < leastInk)
        return {};
    const cv::Rect box = cv::boundingRect(ink > inkShare * full);
    if (box.empty())
        return {};
    ink(box).convertTo(ink, CV_8U, 255.0 / full);
    const cv::Mat square = normalised(ink);
    const auto& weights = gridWeights();
    cv::Mat features(1, glyphFeatures, CV_32F);
    auto* to = features.ptr<float>();
    for (const auto& slopes : slopesOf(square)) {
        const cv::Matx<float, grid, grid> seen = weights * slopes * weights.t();
        for (const float strength : seen.val)
            *to++ = std::sqrt(strength); // evens out heavy strokes
    }
    const double length = cv::norm(features);
    if (length == 0)
        return {};
    return features / length;
}

} // namespace mirvak

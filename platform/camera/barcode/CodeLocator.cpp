#include "CodeLocator.h"

#include "CellMap.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <optional>

namespace mirvak {

namespace {

constexpr int side = CellMap::cellSide;
constexpr float leastContrast = 30;     // grey values between paper and ink
constexpr float leastEdges = 0.10F;     // of the contrast, squared
constexpr float lightestMiddle = 0.74F; // tone between darkest (0) and lightest (1)
constexpr float darkestMiddle = 0.26F;
constexpr int leastCells = 4;
constexpr float denseEdges = 0.25F;      // of the same; bars of four pixels have them
constexpr float leastSide = 1.9F * side; // pixels of the level
constexpr float leastBars = 5.9F * side; // across the bars: none has less than fifty modules
constexpr double marginCells = 2.0;      // the half-covered cells of the border, and some quiet zone
constexpr double calmNoise = 4;          // grey values, standard deviation
constexpr double calmingSigma = 1.0;     // pixels of the level
constexpr double barsExcess = 0.4; // of the edges across the bars over those along them, as a share of both

// The cells of a picture that look like the inside of a code (255), and how edgy each is.
struct Likely
{
    cv::Mat mask;
    cv::Mat edges;
    cv::Mat tone;   ///< between the darkest (0) and the lightest (1) around; means nothing where all is flat
    cv::Mat mean;   ///< grey value
    cv::Mat middle; ///< between the darkest and the lightest
};

Likely likelyCells(const cv::Mat& grey)
{
    const CellMap map(grey);
    Likely result;
    if (map.mean.empty())
        return result;
    const cv::Size around(3, 3);
    const cv::Mat contrast = map.lightest - map.darkest;
    cv::Mat edges;
    cv::blur(map.mean, result.mean, around);
    cv::blur(map.edges, edges, around);
    result.middle = (map.darkest + map.lightest) * 0.5;
    result.tone = (result.mean - map.darkest) / cv::max(contrast, 1.0);
    result.edges = edges / cv::max(contrast.mul(contrast), 1.0);
    result.mask = (contrast >= leastContrast) & (result.edges >= leastEdges) &
                  (result.tone >= darkestMiddle) & (result.tone <= lightestMiddle);
    return result;
}

struct Direction
{
    double degrees; ///< clockwise
    bool isBars;
};

// The direction of the edges in a part of the picture: lines and the lines at right angles to them count as
// one, which the fourth power of the gradient, as a complex number, does. Where most edges run in one of the
// two, that one is up.
Direction directionOf(const cv::Mat& grey)
{
    cv::Mat across, down;
    cv::Scharr(grey, across, CV_32F, 1, 0, 1.0 / 32);
    cv::Scharr(grey, down, CV_32F, 0, 1, 1.0 / 32);
    double real = 0, imaginary = 0, difference = 0, product = 0, sum = 0;
    for (int y = 0; y < grey.rows; ++y) {
        const auto* gx = across.ptr<float>(y);
        const auto* gy = down.ptr<float>(y);
        for (int x = 0; x < grey.cols; ++x) {
            const float a = gx[x] * gx[x] - gy[x] * gy[x], b = 2 * gx[x] * gy[x];
            real += a * a - b * b;
            imaginary += 2 * a * b;
            difference += a;
            product += b;
            sum += gx[x] * gx[x] + gy[x] * gy[x];
        }
    }
    const double angle = std::atan2(imaginary, real) / 4;
    const double excess = std::cos(2 * angle) * difference + std::sin(2 * angle) * product;
    const double degrees = angle * 180 / CV_PI;
    return {excess < 0 ? degrees + 90 : degrees, std::abs(excess) > barsExcess * sum};
}

// The smallest rectangle in that direction around all cells, with a margin; pixels of the level.
cv::RotatedRect boxAround(const std::vector<cv::Point>& cells, double degrees)
{
    const double angle = degrees * CV_PI / 180, c = std::cos(angle), s = std::sin(angle);
    double left = 1e9, right = -1e9, top = 1e9, bottom = -1e9;
    for (const cv::Point& cell : cells) {
        const double x = 1 + (cell.x + 0.5) * side, y = 1 + (cell.y + 0.5) * side;
        const double u = c * x + s * y, v = c * y - s * x;
        left = std::min(left, u);
        right = std::max(right, u);
        top = std::min(top, v);
        bottom = std::max(bottom, v);
    }
    const double grow = (0.5 + marginCells) * side, u = (left + right) / 2, v = (top + bottom) / 2;
    return {cv::Point2f(float(c * u - s * v), float(s * u + c * v)),
            cv::Size2f(float(right - left + 2 * grow), float(bottom - top + 2 * grow)),
            float(degrees)};
}

bool isOnDark(const Likely& likely, const cv::Mat& mask, const cv::Rect& cells)
{
    const cv::Rect all(cv::Point(), likely.mean.size());
    const cv::Rect outer = cv::Rect(cells.x - 2, cells.y - 2, cells.width + 4, cells.height + 4) & all;
    cv::Mat ring = cv::Mat(outer.size(), CV_8UC1, cv::Scalar(255));
    ring(cells - outer.tl()).setTo(0);
    return cv::countNonZero(ring) > 0 &&
           cv::mean(likely.mean(outer), ring)[0] < cv::mean(likely.middle(cells), mask(cells))[0];
}

/// The cells of each connected part of a mask.
std::vector<std::vector<cv::Point>> partsOf(const cv::Mat& mask)
{
    cv::Mat labels;
    const int count = cv::connectedComponents(mask, labels, 8, CV_32S);
    std::vector<std::vector<cv::Point>> parts(static_cast<size_t>(count));
    for (int y = 0; y < labels.rows; ++y) {
        for (int x = 0; x < labels.cols; ++x) {
            if (const int label = labels.at<int>(y, x))
                parts[static_cast<size_t>(label)].emplace_back(x, y);
        }
    }
    return parts; // the first, the ground, is empty
}

// What a connected part is taken for; pixels of the level. Nothing when it is too small to be a code.
std::optional<Candidate> candidateOf(const std::vector<cv::Point>& cells,
                                     const cv::Mat& grey,
                                     const Likely& likely,
                                     const cv::Mat& mask)
{
    if (cells.size() < leastCells)
        return std::nullopt;
    const cv::Rect bounds = cv::boundingRect(cells);
    const cv::Rect pixels(
        1 + bounds.x * side, 1 + bounds.y * side, bounds.width * side, bounds.height * side);
    const Direction direction = directionOf(grey(pixels));
    Candidate candidate;
    candidate.box = boxAround(cells, direction.degrees);
    candidate.isBars = direction.isBars;
    const cv::Size2f inner(candidate.box.size.width - float(2 * marginCells * side),
                           candidate.box.size.height - float(2 * marginCells * side));
    if (std::min(inner.width, inner.height) < leastSide || (direction.isBars && inner.width < leastBars))
        return std::nullopt;
    candidate.onDark = isOnDark(likely, mask, bounds);
    const double filled = double(cells.size()) * side * side / inner.area();
    const double tone = cv::mean(likely.tone(bounds), mask(bounds))[0];
    const double density = cv::mean(likely.edges(bounds), mask(bounds))[0];
    candidate.likeness =
        std::min(1.0, filled) * (1 - 2 * std::abs(tone - 0.5)) * std::min(1.0, density / denseEdges);
    return candidate;
}

void collect(const cv::Mat& grey, int halvings, std::vector<Candidate>& found)
{
    const Likely likely = likelyCells(grey);
    if (likely.mask.empty())
        return;
    cv::Mat closed;
    cv::morphologyEx(likely.mask, closed, cv::MORPH_CLOSE, cv::Mat::ones(3, 3, CV_8UC1));
    const float scale = float(1 << halvings), centre = (scale - 1) / 2;
    for (const std::vector<cv::Point>& cells : partsOf(closed)) {
        if (auto candidate = candidateOf(cells, grey, likely, closed)) {
            cv::RotatedRect& box = candidate->box;
            box = {box.center * scale + cv::Point2f(centre, centre), box.size * scale, box.angle};
            candidate->halvings = halvings;
            found.push_back(*candidate);
        }
    }
}

bool sameBox(const cv::RotatedRect& a, const cv::RotatedRect& b)
{
    if (std::abs(a.size.area() - b.size.area()) > 0.4 * std::max(a.size.area(), b.size.area()))
        return false;
    std::vector<cv::Point2f> common;
    if (cv::rotatedRectangleIntersection(a, b, common) == cv::INTERSECT_NONE)
        return false;
    return cv::contourArea(common) > 0.75 * std::max(a.size.area(), b.size.area());
}

// A level in which noise makes no edges of its own. Each halving halves it.
cv::Mat calmLevel(const GreyFrame& frame, int halvings)
{
    cv::Mat calm = frame.level(halvings);
    if (frame.noise() / (1 << halvings) > calmNoise)
        cv::GaussianBlur(calm, calm, cv::Size(), calmingSigma);
    return calm;
}

} // namespace

std::vector<Candidate> locateCodes(const GreyFrame& frame)
{
    std::vector<Candidate> found;
    for (int halvings = 0; halvings < GreyFrame::levelCount; ++halvings)
        collect(calmLevel(frame, halvings), halvings, found);

    std::stable_sort(found.begin(), found.end(), [](const Candidate& a, const Candidate& b) {
        return a.likeness > b.likeness;
    });
    std::vector<Candidate> distinct;
    for (const Candidate& candidate : found) {
        if (std::none_of(distinct.begin(), distinct.end(), [&](const Candidate& other) {
                return sameBox(candidate.box, other.box);
            }))
            distinct.push_back(candidate);
    }
    return distinct;
}

} // namespace mirvak

#include "Outline.h"

#include "EdgeField.h"
#include "LineFinder.h"
#include "QuadCheck.h"
#include "QuadFinder.h"
#include "Reduction.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int reducedSide = 640;
constexpr int leastSize = 64; // pixels; in a smaller picture there is no page to find
constexpr size_t mostLines = 36;
constexpr double confident = 0.6;

// The corner nearest to the picture's top left comes first; a page turned by 45 degrees has two equal ones,
// of which the upper wins.
void startTopLeft(std::array<cv::Point2d, 4>& corners)
{
    const auto first = std::min_element(
        corners.begin(), corners.end(), [](const auto& a, const auto& b) { return a.x + a.y < b.x + b.y; });
    std::rotate(corners.begin(), first, corners.end());
}

} // namespace

bool liesOnBorder(const cv::Point2d& from, const cv::Point2d& to, const cv::Size& picture, double tolerance)
{
    const auto both = [&](double a, double b, double border) {
        return std::abs(a - border) <= tolerance && std::abs(b - border) <= tolerance;
    };
    return both(from.x, to.x, 0) || both(from.x, to.x, picture.width - 1) || both(from.y, to.y, 0) ||
           both(from.y, to.y, picture.height - 1);
}

struct OutlineFinder::Work
{
    using Planes = std::array<cv::Mat, 3>;

    const Planes& look(const cv::Mat& rgb);

    Reduction reduction;
    Planes smooth;
    EdgeField edges;
    LineFinder lines;
    QuadFinder quads;
};

/// The small picture, its noise smoothed; into planes of its own, as a filter in place copies its input
/// first.
const OutlineFinder::Work::Planes& OutlineFinder::Work::look(const cv::Mat& rgb)
{
    reduction.build(rgb, reducedSide);
    for (size_t i = 0; i < smooth.size(); ++i)
        cv::GaussianBlur(reduction.planes()[i], smooth[i], {3, 3}, 0);
    return smooth;
}

OutlineFinder::OutlineFinder() : work_(std::make_unique<Work>()) {}

OutlineFinder::~OutlineFinder() = default;

std::optional<Outline> OutlineFinder::find(const cv::Mat& rgb)
{
    if (std::min(rgb.cols, rgb.rows) < leastSize)
        return std::nullopt;
    const Work::Planes& planes = work_->look(rgb);
    work_->edges.build(planes);
    const auto& lines = work_->lines.find(work_->edges, planes, mostLines);
    const auto& outlines = work_->quads.find(lines, work_->reduction.size());
    const auto page = std::find_if(outlines.begin(), outlines.end(), [&](const Outline& outline) {
        return outline.confidence >= confident && paperReachesBorder(planes, outline.corners);
    });
    if (page == outlines.end() || isHalfOfSpread(planes, work_->edges, page->corners))
        return std::nullopt;
    std::optional<Outline> found = *page;
    found->corners = snapSides(work_->edges, found->corners);
    for (cv::Point2d& corner : found->corners)
        corner = work_->reduction.toFull(corner);
    startTopLeft(found->corners);
    return found;
}

std::optional<Outline> findOutline(const cv::Mat& rgb)
{
    thread_local OutlineFinder finder;
    return finder.find(rgb);
}

} // namespace mirvak

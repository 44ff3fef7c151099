#include "Outline.h"

#include "EdgeField.h"
#include "LineFinder.h"
#include "OutlineJudge.h"
#include "QuadCheck.h"
#include "QuadFinder.h"
#include "SheetMap.h"
#include "SmallLook.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr size_t mostLines = 72;
constexpr double answered = 0.5; // more likely than anything else, and than no sheet
constexpr double sureOutline = 0.9;

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
    SmallLook look;
    EdgeField edges;
    RegionField regions;
    LineFinder lines;
    QuadFinder quads;
    SheetMap map;
    OutlineJudge judge;
};

OutlineFinder::OutlineFinder() : work_(std::make_unique<Work>()) {}

OutlineFinder::~OutlineFinder() = default;

std::optional<Outline> OutlineFinder::find(const cv::Mat& rgb)
{
    mayLeave_ = false;
    if (!SmallLook::canHoldPage(rgb))
        return std::nullopt;
    const SmallLook::Planes& planes = work_->look.build(rgb);
    work_->map.build(planes);
    work_->edges.build(planes, work_->map.quiet(), work_->map.cell());
    work_->regions.build(planes, work_->edges.change());
    const auto& lines = work_->lines.find(work_->edges, planes, work_->regions, mostLines, &work_->map);
    work_->quads.find(lines, work_->look.reduction().size(), QuadFinder::Search::page, &work_->map);
    addFromMap(work_->map, work_->edges, planes, work_->quads);
    const auto& outlines = work_->judge.judge(work_->quads.quads(), planes, work_->regions, work_->map);
    std::optional<Outline> found = choose(outlines);
    mayLeave_ = !found && work_->map.hasSheetAtBorder();
    if (found)
        found->corners = work_->look.inPicture(snapSides(work_->edges, found->corners));
    return found;
}

std::optional<Outline> OutlineFinder::choose(const std::vector<Outline>& outlines) const
{
    if (outlines.empty() || outlines.front().confidence < answered)
        return std::nullopt;
    const Outline& page = outlines.front();
    const SmallLook::Planes& planes = work_->look.planes();
    // A page may run out of the picture, but an even desk beyond its edge may look as if it did.
    const bool mayReachBorder = page.confidence >= sureOutline || paperReachesBorder(planes, page.corners);
    if (!mayReachBorder || isHalfOfSpread(planes, work_->edges, page.corners))
        return std::nullopt;
    return page;
}

std::optional<Outline> findOutline(const cv::Mat& rgb)
{
    thread_local OutlineFinder finder;
    return finder.find(rgb);
}

} // namespace mirvak

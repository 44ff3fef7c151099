#include "Outline.h"

#include "CloseLook.h"
#include "OutlineJudge.h"
#include "PageCandidates.h"
#include "QuadCheck.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

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
    PageCandidates candidates;
    OutlineJudge judge;
    CloseLook close;
};

OutlineFinder::OutlineFinder() : work_(std::make_unique<Work>()) {}

OutlineFinder::~OutlineFinder() = default;

std::optional<Outline> OutlineFinder::find(const cv::Mat& rgb)
{
    mayLeave_ = false;
    if (!SmallLook::canHoldPage(rgb))
        return std::nullopt;
    const PageCandidates& candidates = work_->candidates;
    const auto& quads = work_->candidates.find(rgb);
    std::vector<Outline> outlines =
        work_->judge.judge(quads, candidates.planes(), candidates.regions(), candidates.map());
    work_->close.weigh(outlines, candidates.planes(), candidates.edges());
    std::optional<Outline> found = choose(outlines);
    mayLeave_ = !found && candidates.map().hasSheetAtBorder();
    if (found)
        found->corners = candidates.look().inPicture(snapSides(candidates.edges(), found->corners));
    return found;
}

std::optional<Outline> OutlineFinder::choose(const std::vector<Outline>& outlines) const
{
    if (outlines.empty() || outlines.front().confidence < answered)
        return std::nullopt;
    const Outline& page = outlines.front();
    const SmallLook::Planes& planes = work_->candidates.planes();
    // A page may run out of the picture, but an even desk beyond its edge may look as if it did.
    const bool mayReachBorder = page.confidence >= sureOutline || paperReachesBorder(planes, page.corners);
    if (!mayReachBorder || isHalfOfSpread(planes, work_->candidates.edges(), page.corners))
        return std::nullopt;
    return page;
}

std::optional<Outline> findOutline(const cv::Mat& rgb)
{
    thread_local OutlineFinder finder;
    return finder.find(rgb);
}

} // namespace mirvak

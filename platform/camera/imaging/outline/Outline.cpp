#include "Outline.h"

#include "CloseLook.h"
#include "OutlineJudge.h"
#include "PageCandidates.h"
#include "QuadCheck.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double answered = 0.5;      // more likely than anything else, and than no sheet
constexpr double answeredAgain = 0.7; // in the second round: where a side is hidden, less is wrong too often
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
    std::vector<Outline> searchTwice(const cv::Mat& rgb);
    std::vector<Outline> weigh(const std::vector<QuadFinder::Quad>& quads, OutlineJudge::Round round);

    PageCandidates candidates;
    OutlineJudge judge;
    CloseLook close;
};

/// The possible outlines, most likely first.
std::vector<Outline> OutlineFinder::Work::weigh(const std::vector<QuadFinder::Quad>& quads,
                                                OutlineJudge::Round round)
{
    std::vector<Outline> outlines =
        judge.judge(quads, candidates.planes(), candidates.regions(), candidates.map(), round);
    close.weigh(outlines, candidates.planes(), candidates.edges());
    return outlines;
}

/// The outlines of the round that is more certain, of the second one only sure ones.
std::vector<Outline> OutlineFinder::Work::searchTwice(const cv::Mat& rgb)
{
    std::vector<Outline> first = weigh(candidates.find(rgb), OutlineJudge::Round::first);
    if (first.empty() || first.front().confidence >= convincing)
        return first;
    std::vector<Outline> second = weigh(candidates.widen(first), OutlineJudge::Round::second);
    const double least = std::max(answeredAgain, first.front().confidence);
    return second.front().confidence >= least ? second : first;
}

OutlineFinder::OutlineFinder() : work_(std::make_unique<Work>()) {}

OutlineFinder::~OutlineFinder() = default;

std::optional<Outline> OutlineFinder::find(const cv::Mat& rgb)
{
    mayLeave_ = false;
    if (!SmallLook::canHoldPage(rgb))
        return std::nullopt;
    const PageCandidates& candidates = work_->candidates;
    std::optional<Outline> found = choose(work_->searchTwice(rgb));
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

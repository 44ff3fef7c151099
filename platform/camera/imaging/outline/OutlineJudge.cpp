#include "OutlineJudge.h"

#include "OutlineWeights.h"
#include "PageWeights.h"
#include "QuadOverlap.h"
#include "SecondWeights.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace mirvak {

namespace {

constexpr double sameSheet = 0.93; // shared area over joined area
constexpr size_t mostAnswers = 6;
// Of the score by edges and colours alone: where the map is blind, as to half of a page in a shadow, they
// hold against it.
constexpr double edgeShare = 0.3; // learn_judge.py learns with it
constexpr double atBorder = 1.5;  // pixels
constexpr double mayPlace = 0.1;  // of the share of the likeliest

} // namespace

bool leavesPicture(const std::array<cv::Point2d, 4>& corners, const cv::Size& size)
{
    return std::any_of(corners.begin(), corners.end(), [&](const cv::Point2d& corner) {
        return corner.x < atBorder || corner.y < atBorder || corner.x > size.width - 1 - atBorder ||
               corner.y > size.height - 1 - atBorder;
    });
}

namespace {

template <size_t units, size_t count>
double weigh(const std::array<std::array<float, count>, units>& hidden,
             const std::array<float, units>& sum,
             float bias,
             const std::array<float, count>& evidence)
{
    double score = bias;
    for (size_t unit = 0; unit < units; ++unit) {
        const auto& weights = hidden[unit];
        score +=
            sum[unit] * std::tanh(std::inner_product(weights.begin(), weights.end(), evidence.begin(), 0.0F));
    }
    return score;
}

} // namespace

double OutlineJudge::scoreOf(const Evidence& evidence)
{
    return weigh(outlineWeights, outlineSum, outlineBias, evidence);
}

double OutlineJudge::scoreOf(const PageEvidence& evidence)
{
    return weigh(pageWeights, pageSum, pageBias, evidence);
}

double OutlineJudge::scoreOf(const SecondEvidence& evidence)
{
    return weigh(secondWeights, secondSum, secondBias, evidence);
}

double OutlineJudge::scoreOf(size_t quad, Round round) const
{
    return round == Round::first ? scoreOf(pageEvidence_[quad]) : scoreOf(secondEvidence_[quad]);
}

const std::vector<Outline>& OutlineJudge::judge(const std::vector<QuadFinder::Quad>& quads,
                                                const SmallLook::Planes& planes,
                                                const RegionField& regions,
                                                const SheetMap& map,
                                                Round round)
{
    desk_.learn(planes);
    gatherEvidence(quads, planes, regions, desk_, evidence_);
    gatherPageEvidence(quads, map, evidence_, pageEvidence_);
    if (round == Round::second)
        gatherSecondEvidence(quads, planes, pageEvidence_, secondEvidence_);
    shares_.clear();
    edgeScores_.clear();
    double all = 1; // no sheet
    for (size_t i = 0; i < evidence_.size(); ++i) {
        // The map has learnt from whole sheets only.
        const double byEdges = leavesPicture(quads[i].corners, planes[0].size()) ? 1 : edgeShare;
        edgeScores_.push_back(scoreOf(evidence_[i]));
        const double score = byEdges * edgeScores_.back() + (1 - byEdges) * scoreOf(i, round);
        shares_.push_back(std::exp(score));
        all += shares_.back();
    }
    outlines_.clear();
    while (outlines_.size() < std::min(mostAnswers, quads.size())) {
        const auto best = std::max_element(shares_.begin(), shares_.end());
        if (*best <= 0)
            break;
        outlines_.push_back(takeSheet(quads, static_cast<size_t>(best - shares_.begin()), all));
    }
    return outlines_;
}

Outline OutlineJudge::takeSheet(const std::vector<QuadFinder::Quad>& quads, size_t likeliest, double all)
{
    const double least = mayPlace * shares_[likeliest];
    size_t place = likeliest;
    Outline outline;
    for (size_t i = 0; i < quads.size(); ++i) {
        if (shares_[i] <= 0 || overlapOf(quads[i].corners, quads[likeliest].corners) < sameSheet)
            continue;
        if (shares_[i] >= least && edgeScores_[i] > edgeScores_[place])
            place = i;
        outline.confidence += shares_[i] / all;
        shares_[i] = 0;
    }
    outline.corners = quads[place].corners;
    return outline;
}

} // namespace mirvak

#pragma once

#include "Outline.h"
#include "SecondEvidence.h"

#include <vector>

namespace mirvak {

/// Whether a corner lies on the border of a picture of that size, or beyond it.
bool leavesPicture(const std::array<cv::Point2d, 4>& corners, const cv::Size& size);

/// Certainty from which on there is no need of a second round, with what outlines would be if one of their
/// sides lay elsewhere.
constexpr double convincing = 0.9;

/// Weighs the evidence of possible outlines of one picture against each other and against there being no
/// sheet. Each outline has a score, "no sheet" the score 0; their exponentials are shares of certainty (a
/// conditional logit: McFadden 1974). The score comes from a small neural network with one hidden layer,
/// learnt from made scenes (`learn_judge.py`). Keeps its buffers; one thread at a time.
class OutlineJudge
{
public:
    enum class Round {
        first, ///< the outlines that are seen
        second ///< those of PageCandidates::widen(), of which one side may be hidden
    };
    /// The possible outlines, most likely first, each with its certainty as confidence. Those that nearly
    /// agree with a better one share theirs with it and stay out; of all of these the edges choose one.
    const std::vector<Outline>& judge(const std::vector<QuadFinder::Quad>& quads,
                                      const SmallLook::Planes& planes,
                                      const RegionField& regions,
                                      const SheetMap& map,
                                      Round round = Round::first);

    /// Of one outline alone, among several sheets; above 0 when it is more likely than no sheet.
    static double scoreOf(const Evidence& evidence);
    /// The same of the one page.
    static double scoreOf(const PageEvidence& evidence);
    static double scoreOf(const SecondEvidence& evidence);

private:
    double scoreOf(size_t quad, Round round) const;
    /// Takes the likeliest one and all that nearly agree with it out of what is left. `all`: of the shares.
    Outline takeSheet(const std::vector<QuadFinder::Quad>& quads, size_t likeliest, double all);

    DeskColours desk_;
    std::vector<Evidence> evidence_;
    std::vector<PageEvidence> pageEvidence_;
    std::vector<SecondEvidence> secondEvidence_;
    std::vector<double> shares_, edgeScores_;
    std::vector<Outline> outlines_;
};

} // namespace mirvak

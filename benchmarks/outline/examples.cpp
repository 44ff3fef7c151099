// What learn_judge.py learns from: the evidence of all that may be an outline, in scenes of which the corners
// are known.
//   judge_examples FILE [SCENES [SEED [sheets|small|second|small-second]]]   SCENES of each kind of desk;
//   with `sheets` the outlines are found without the map, with `small` the scenes are those of map_scenes,
//   with `second` those in which no outline was convincing are judged again
// FILE: for each scene the number of outlines (int32), then for each of them floats: 1 when it is right else
// 0, 1 when it leaves the picture, the Evidence, the PageEvidence or, of the second round, the
// SecondEvidence.
#include "CloseLook.h"
#include "LearningScenes.h"
#include "OutlineJudge.h"
#include "PageCandidates.h"
#include "QuadOverlap.h"
#include "SheetEvidence.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr double goodOverlap = 0.93; // in the small picture; the full one places the sides more finely
constexpr int misledEach = 12;

/// Finds all outlines of one scene after the other and writes down what speaks for each.
class Examples
{
public:
    Examples(std::FILE* file, const std::string& option)
        : file_(file), isSecond_(option == "second" || option == "small-second"),
          candidates_(option != "sheets")
    {
    }

    /// There are sheets and desks of which the map has learnt nothing. Now and then it is that of the scene
    /// before, so that it is not believed blindly (modality dropout: Neverova and others 2016).
    void add(const cv::Mat& picture, const std::optional<Corners>& sheet)
    {
        const bool isMisled = count_++ % misledEach == misledEach - 1;
        candidates_.find(picture, isMisled ? &before_ : nullptr);
        if (!isSecond_ || needsSecondRound()) {
            gather(candidates_.quads());
            write(sheet);
        }
        before_ = picture;
    }

private:
    bool needsSecondRound()
    {
        std::vector<mirvak::Outline> outlines =
            judge_.judge(candidates_.quads(), candidates_.planes(), candidates_.regions(), candidates_.map());
        close_.weigh(outlines, candidates_.planes(), candidates_.edges());
        if (outlines.empty() || outlines.front().confidence >= mirvak::convincing)
            return false;
        candidates_.widen(outlines);
        return true;
    }

    void gather(const std::vector<mirvak::QuadFinder::Quad>& quads)
    {
        desk_.learn(candidates_.planes());
        mirvak::gatherEvidence(quads, candidates_.planes(), candidates_.regions(), desk_, evidence_);
        mirvak::gatherPageEvidence(quads, candidates_.map(), evidence_, pageEvidence_);
        if (isSecond_)
            mirvak::gatherSecondEvidence(quads, candidates_.planes(), pageEvidence_, secondEvidence_);
    }

    void write(const std::optional<Corners>& sheet)
    {
        const auto& quads = candidates_.quads();
        const auto count = static_cast<std::int32_t>(quads.size());
        std::fwrite(&count, sizeof count, 1, file_);
        for (size_t i = 0; i < quads.size(); ++i) {
            const Corners found =
                candidates_.look().inPicture(mirvak::snapSides(candidates_.edges(), quads[i].corners));
            const bool isGood = sheet && mirvak::overlapOf(found, *sheet) > goodOverlap;
            const bool leaves = mirvak::leavesPicture(quads[i].corners, candidates_.planes()[0].size());
            const float facts[] = {isGood ? 1.0F : 0.0F, leaves ? 1.0F : 0.0F};
            std::fwrite(facts, sizeof facts, 1, file_);
            std::fwrite(evidence_[i].data(), sizeof evidence_[i], 1, file_);
            if (isSecond_)
                std::fwrite(secondEvidence_[i].data(), sizeof secondEvidence_[i], 1, file_);
            else
                std::fwrite(pageEvidence_[i].data(), sizeof pageEvidence_[i], 1, file_);
        }
    }

    std::FILE* file_;
    bool isSecond_;
    mirvak::PageCandidates candidates_;
    mirvak::OutlineJudge judge_;
    mirvak::CloseLook close_;
    int count_ = 0;
    cv::Mat before_;
    mirvak::DeskColours desk_;
    std::vector<mirvak::Evidence> evidence_;
    std::vector<mirvak::PageEvidence> pageEvidence_;
    std::vector<mirvak::SecondEvidence> secondEvidence_;
};

} // namespace

int main(int argc, char** argv)
{
    return writeExamples(
        argc,
        argv,
        "judge_examples FILE [SCENES [SEED [sheets|small|second|small-second]]]",
        [](std::FILE* file, const std::string& option) {
            return [examples = std::make_shared<Examples>(file, option)](
                       const cv::Mat& picture, const std::optional<Corners>& sheet) {
                examples->add(picture, sheet);
            };
        },
        forScenesOf);
}

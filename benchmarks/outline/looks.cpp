// What learn_look.py learns from: what CloseLook sees of the likeliest outlines, in scenes of which the
// corners are known.
//   look_examples FILE [SCENES [SEED [small]]]   SCENES of each kind of desk and as many open books; `small`:
//   those of map_scenes
// A scene in which no outline was convincing is there once more, with the outlines of the second round.
// FILE: for each scene the number of outlines (int32), then for each of them floats, its overlap with the
// sheet and its certainty, and its patch.
#include "CloseLook.h"
#include "LearningScenes.h"
#include "OutlineJudge.h"
#include "PageCandidates.h"
#include "PlainScenes.h"
#include "QuadOverlap.h"

#include <cstdint>
#include <cstdio>
#include <memory>

namespace {

class Examples
{
public:
    explicit Examples(std::FILE* file) : file_(file) {}

    void add(const cv::Mat& picture, const std::optional<Corners>& sheet)
    {
        std::vector<mirvak::Outline> outlines = judge(candidates_.find(picture), Round::first);
        write(outlines, sheet);
        close_.weigh(outlines, candidates_.planes(), candidates_.edges());
        if (!outlines.empty() && outlines.front().confidence < mirvak::convincing)
            write(judge(candidates_.widen(outlines), Round::second), sheet);
    }

private:
    using Round = mirvak::OutlineJudge::Round;

    const std::vector<mirvak::Outline>& judge(const std::vector<mirvak::QuadFinder::Quad>& quads, Round round)
    {
        return judge_.judge(quads, candidates_.planes(), candidates_.regions(), candidates_.map(), round);
    }

    void write(const std::vector<mirvak::Outline>& outlines, const std::optional<Corners>& sheet)
    {
        const auto count = static_cast<std::int32_t>(outlines.size());
        std::fwrite(&count, sizeof count, 1, file_);
        for (const mirvak::Outline& outline : outlines) {
            const Corners found =
                candidates_.look().inPicture(mirvak::snapSides(candidates_.edges(), outline.corners));
            const auto overlap = static_cast<float>(sheet ? mirvak::overlapOf(found, *sheet) : 0);
            const float facts[] = {overlap, static_cast<float>(outline.confidence)};
            std::fwrite(facts, sizeof facts, 1, file_);
            const cv::Mat& patch = close_.patchOf(outline.corners, candidates_.planes(), candidates_.edges());
            std::fwrite(patch.data, patch.elemSize(), patch.total(), file_);
        }
    }

    std::FILE* file_;
    mirvak::PageCandidates candidates_;
    mirvak::OutlineJudge judge_;
    mirvak::CloseLook close_;
};

} // namespace

int main(int argc, char** argv)
{
    return writeExamples(
        argc,
        argv,
        "look_examples FILE [SCENES [SEED [small]]]",
        [](std::FILE* file, const std::string&) {
            return [examples = std::make_shared<Examples>(file)](const cv::Mat& picture,
                                                                 const std::optional<Corners>& sheet) {
                examples->add(picture, sheet);
            };
        },
        [](unsigned seed, const UseScene& use) {
            forScenesOf(seed, use);
            for (int desk = 0; desk < plainDesks; ++desk) { // which it takes for pages where it has seen few
                const PlainScene book = makeBookScene(static_cast<made::Desk>(desk), learningFrame, seed);
                use(book.picture, book.sheet);
            }
        });
}

// How surely sheets that lie side by side are told apart: made scenes of known truth on every desk. A line
// for each kind of scene: how many sheets lay there, how many were found, how many answers were none, how far
// the outlines agree with the truth (shared area over joined area), and what the search took.
#include "MadeDesks.h"
#include "Outline.h"
#include "QuadOverlap.h"
#include "SheetFinder.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

using Clock = std::chrono::steady_clock;

struct Score
{
    int laid = 0, found = 0, wrong = 0;
    double least = 1, sum = 0, milliseconds = 0;
};

void judge(const made::ManySheets& scene, const std::vector<mirvak::Outline>& answer, Score& score)
{
    score.laid += static_cast<int>(scene.truth.size());
    int right = 0;
    for (const made::Corners& sheet : scene.truth) {
        double best = 0;
        for (const mirvak::Outline& outline : answer)
            best = std::max(best, mirvak::overlapOf(outline.corners, sheet));
        if (best < 0.8)
            continue;
        ++right;
        score.sum += best;
        score.least = std::min(score.least, best);
    }
    score.found += right;
    score.wrong += static_cast<int>(answer.size()) - right;
}

} // namespace

int main(int argc, char** argv)
{
    const unsigned seeds = argc > 1 ? static_cast<unsigned>(std::atoi(argv[1])) : 1;
    constexpr std::pair<made::Desk, const char*> desks[] = {{made::Desk::light, "light"},
                                                            {made::Desk::dark, "dark"},
                                                            {made::Desk::wood, "wood"},
                                                            {made::Desk::checked, "checked"},
                                                            {made::Desk::noisy, "rough"},
                                                            {made::Desk::coloured, "coloured"}};
    std::printf("%-22s %-9s %5s %5s %5s %6s %6s %6s\n",
                "sheets",
                "desk",
                "laid",
                "found",
                "wrong",
                "mean",
                "least",
                "ms");
    Score all;
    for (int kind = 0; kind < made::sheetSceneKinds; ++kind) {
        for (const auto& [desk, name] : desks) {
            Score score;
            std::string what;
            for (unsigned seed = 1; seed <= seeds; ++seed) {
                const made::ManySheets scene = made::manySheets(kind, desk, seed);
                mirvak::findSheets(scene.picture);
                const auto begin = Clock::now();
                std::vector<mirvak::Outline> answer = mirvak::findSheets(scene.picture);
                score.milliseconds += std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
                for (mirvak::Outline& outline : answer)
                    outline = mirvak::refineOutline(scene.picture, outline);
                judge(scene, answer, score);
                what = scene.name;
            }
            std::printf("%-22s %-9s %5d %5d %5d %6.3f %6.3f %6.1f\n",
                        what.c_str(),
                        name,
                        score.laid,
                        score.found,
                        score.wrong,
                        score.sum / std::max(1, score.found),
                        score.least,
                        score.milliseconds / seeds);
            all.laid += score.laid;
            all.found += score.found;
            all.wrong += score.wrong;
        }
    }
    std::printf("all: %d laid, %d found, %d wrong\n", all.laid, all.found, all.wrong);
    return 0;
}

// What is said of a page before it is captured: made scenes as they are and spoilt in one way each, every one
// as a short stream. Prints how often which verdict stood at the end.
//   bench_verdict [SCENES [SEED [WIDTH [FOLDER]]]]    FOLDER receives the scenes that were judged wrongly
#include "Codec.h"
#include "Faults.h"
#include "Outline.h"
#include "OutlineScenes.h"
#include "ShotVerdict.h"

#include <QGuiApplication>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace {

using mirvak::Flaw;
using mirvak::Verdict;

constexpr int frames = 20;
constexpr std::chrono::milliseconds interval{66};
constexpr size_t columns = 3 + mirvak::flawCount;
const std::array<const char*, columns> names = {
    "no page", "looking", "good", "leaves", "moving", "dark", "blurred", "reflection", "not sure"};

size_t columnOf(const Verdict& verdict)
{
    if (verdict.state == Verdict::State::flawed)
        return 3 + static_cast<size_t>(verdict.flaw);
    return static_cast<size_t>(verdict.state);
}

/// The verdict over a stream of one scene, and what one frame's costs besides its outline.
class FrameStream
{
public:
    explicit FrameStream(unsigned seed) : random_(seed) {}

    size_t run(const std::function<cv::Mat(int frame)>& picture)
    {
        mirvak::ShotVerdict judge;
        mirvak::OutlineFinder finder;
        mirvak::ShotVerdict::Time taken{};
        Verdict verdict;
        for (int i = 0; i < frames; ++i, taken += interval) {
            const cv::Mat frame = faults::grainy(picture(i), 1.0, random_);
            const auto page = finder.find(frame);
            const auto begin = std::chrono::steady_clock::now();
            verdict = judge.judge(frame, page, taken, finder.mayLeavePicture());
            seconds_ += std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
            ++judged_;
        }
        return columnOf(verdict);
    }
    double milliseconds() const { return 1000 * seconds_ / std::max(1, judged_); }

private:
    cv::RNG random_;
    double seconds_ = 0;
    int judged_ = 0;
};

struct Row
{
    const char* name;
    size_t expected; ///< column
    std::function<cv::Mat(const OutlineScene&, int frame, cv::RNG&)> make;
};

std::vector<Row> rows()
{
    const auto flawed = [](Flaw flaw) { return columnOf({Verdict::State::flawed, flaw}); };
    const size_t good = columnOf({Verdict::State::good, {}});
    return {{"as it is", good, [](const auto& s, int, cv::RNG&) { return s.picture; }},
            {"darker, still lit",
             good,
             [](const auto& s, int, cv::RNG& r) { return faults::dim(s.picture, 0.4, 0.002, r); }},
            {"half outside",
             flawed(Flaw::leavesPicture),
             [](const auto& s, int, cv::RNG&) { return faults::partOutside(s.picture, s.sheet); }},
            {"pushed about",
             flawed(Flaw::moving),
             [](const auto& s, int frame, cv::RNG&) { return faults::pushed(s.picture, frame); }},
            {"little light",
             flawed(Flaw::tooDark),
             [](const auto& s, int, cv::RNG& r) { return faults::dim(s.picture, 0.04, 0.004, r); }},
            {"out of focus",
             flawed(Flaw::tooBlurred),
             [](const auto& s, int, cv::RNG& r) { return faults::outOfFocus(s.picture, r); }},
            {"smeared by movement",
             flawed(Flaw::tooBlurred),
             [](const auto& s, int, cv::RNG& r) { return faults::smeared(s.picture, r); }},
            {"a lamp mirrored", flawed(Flaw::reflection), [](const auto& s, int, cv::RNG& r) {
                 return faults::mirroredLamp(s.picture, s.sheet, r);
             }}};
}

/// Things that spoil a scene before a row does are left out.
bool isPlain(const OutlineScene& scene)
{
    return scene.name.find("a reflection") == std::string::npos &&
           scene.name.find("a finger") == std::string::npos;
}

void print(const Row& row, const std::vector<OutlineScene>& scenes, unsigned seed, const std::string& folder)
{
    std::array<int, columns> counts{};
    FrameStream stream(seed);
    for (size_t i = 0; i < scenes.size(); ++i) {
        const unsigned own = seed + static_cast<unsigned>(i);
        const auto frame = [&](int number) {
            cv::RNG random(own);
            random.next();
            return row.make(scenes[i], number, random);
        };
        cv::Mat still = frame(0);
        const bool stands = row.expected != columnOf({Verdict::State::flawed, Flaw::moving});
        const size_t verdict = stream.run([&](int number) { return stands ? still : frame(number); });
        ++counts[verdict];
        if (verdict == row.expected || folder.empty())
            continue;
        mirvak::Image image;
        image.pixels = still;
        const std::string name = std::string(row.name) + " " + std::to_string(i) + " " + names[verdict];
        mirvak::writeImage(folder + '/' + name + ".jpg", image, 90);
        std::printf("%s: %s\n", name.c_str(), scenes[i].name.c_str());
    }
    std::printf("%-22s%7.2f  ", row.name, double(counts[row.expected]) / double(scenes.size()));
    for (const int count : counts)
        std::printf("%11.2f", double(count) / double(scenes.size()));
    std::printf("%9.2f\n", stream.milliseconds());
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    cv::setNumThreads(1);
    setvbuf(stdout, nullptr, _IOLBF, 0); // it takes a while
    const int count = argc > 1 ? std::atoi(argv[1]) : 21;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    const int width = argc > 3 ? std::atoi(argv[3]) : 1632;
    const std::string folder = argc > 4 ? argv[4] : "";
    std::vector<OutlineScene> scenes;
    for (unsigned i = 0; static_cast<int>(scenes.size()) < count; ++i) {
        const auto kind = static_cast<desktops::Kind>(i % desktops::names.size());
        OutlineScene scene = makeOutlineScene(kind, {width, width * 3 / 4}, seed + i);
        if (isPlain(scene))
            scenes.push_back(std::move(scene));
    }
    std::printf("%-22s%7s  ", "scene", "right");
    for (const char* name : names)
        std::printf("%11s", name);
    std::printf("%9s\n", "ms");
    for (const Row& row : rows())
        print(row, scenes, seed, folder);
    return 0;
}

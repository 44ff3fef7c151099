// How surely the outline of a sheet is found: made scenes of which the corners are known, on seven kinds of
// desk.
//   bench_outline [SCENES [SEED [FOLDER]]]   scenes of each desk; FOLDER receives pictures of the failures:
//   green the truth, red the answer. Overlap is shared area over joined area; nothing found counts as 0.
#include "ContourQuad.h"
#include "JpegCodec.h"
#include "Outline.h"
#include "OutlineScenes.h"
#include "QuadOverlap.h"

#include <QGuiApplication>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

namespace {

using mirvak::areaOf;
using mirvak::Outline;
using mirvak::overlapOf;
using mirvak::sharedArea;

constexpr double goodOverlap = 0.95, sureConfidence = 0.8;
const cv::Size frame(1920, 1440), timedFrame(3264, 2448);

/// Most of the answer lies on the sheet, and it is far smaller.
bool isInside(const Corners& answer, const Corners& sheet)
{
    return sharedArea(answer, sheet) > 0.9 * areaOf(answer) && areaOf(answer) < 0.9 * areaOf(sheet);
}

struct Tally
{
    double sum = 0, contour = 0;
    int scenes = 0, bad = 0, none = 0, inside = 0, sure = 0, sureAndGood = 0, falseOnEmpty = 0, empty = 0,
        contourFalse = 0;

    void add(const Tally& other)
    {
        sum += other.sum, contour += other.contour;
        scenes += other.scenes, bad += other.bad, none += other.none, inside += other.inside;
        sure += other.sure, sureAndGood += other.sureAndGood;
        falseOnEmpty += other.falseOnEmpty, empty += other.empty, contourFalse += other.contourFalse;
    }
    void print(const char* name) const
    {
        std::printf("%-12s %8.4f %6.1f%% %5.1f%% %7d %6d/%-4d %7.4f %9.4f %4d of %-4d %6d\n",
                    name,
                    sum / scenes,
                    100.0 * bad / scenes,
                    100.0 * none / scenes,
                    inside,
                    sureAndGood,
                    sure,
                    static_cast<double>(sureAndGood) / std::max(1, sure),
                    contour / scenes,
                    falseOnEmpty,
                    empty,
                    contourFalse);
    }
};

void draw(cv::Mat& picture, const Corners& corners, const cv::Scalar& colour)
{
    for (size_t i = 0; i < 4; ++i)
        cv::line(picture, corners[i], corners[(i + 1) % 4], colour, 5, cv::LINE_AA);
}

void keep(const std::string& path, const cv::Mat& picture, const Corners* sheet, const Outline* answer)
{
    mirvak::Image image;
    image.pixels = picture.clone();
    if (sheet)
        draw(image.pixels, *sheet, {0, 220, 0});
    if (answer)
        draw(image.pixels, answer->corners, {255, 0, 0});
    cv::resize(image.pixels, image.pixels, {}, 0.5, 0.5, cv::INTER_AREA);
    mirvak::writeBytes(path, mirvak::encodeJpeg(image, 85));
}

/// Milliseconds that this thread has run: what else runs on the machine counts little.
double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

/// Times of search and of a plain copy, both on frames of 8 megapixels.
struct Times
{
    std::vector<double> search, copy;

    static double milliseconds(const std::function<void()>& work)
    {
        const double begin = processorTime();
        work();
        return processorTime() - begin;
    }
    void measure(const cv::Mat& picture)
    {
        cv::Mat large, other;
        cv::resize(picture, large, timedFrame, 0, 0, cv::INTER_LINEAR);
        mirvak::findOutline(large);
        double least = 1e9;
        for (int i = 0; i < 3; ++i) // what others do on this machine is no part of it
            least = std::min(least, milliseconds([&] { mirvak::findOutline(large); }));
        search.push_back(least);
        large.copyTo(other);
        copy.push_back(milliseconds([&] { large.copyTo(other); }));
    }
    void print()
    {
        std::sort(search.begin(), search.end());
        std::sort(copy.begin(), copy.end());
        std::printf("search at %dx%d: median %.1f ms, worst %.1f ms; a plain copy %.1f ms\n",
                    timedFrame.width,
                    timedFrame.height,
                    search[search.size() / 2],
                    search.back(),
                    copy[copy.size() / 2]);
    }
};

std::string fileName(const std::string& folder, const char* desk, unsigned seed, const char* what)
{
    return folder + "/" + desk + "-" + std::to_string(seed) + "-" + what + ".jpg";
}

void judgeSheet(size_t desk, unsigned seed, const std::string& folder, Tally& tally, Times* times)
{
    const OutlineScene scene = makeOutlineScene(static_cast<desktops::Kind>(desk), frame, seed);
    std::optional<Outline> answer = mirvak::findOutline(scene.picture);
    if (answer)
        answer = mirvak::refineOutline(scene.picture, *answer);
    const double good = answer ? overlapOf(answer->corners, scene.sheet) : 0;
    const bool sure = answer && answer->confidence > sureConfidence;
    const bool inner = answer && isInside(answer->corners, scene.sheet);
    ++tally.scenes;
    tally.sum += good;
    tally.bad += good < goodOverlap ? 1 : 0;
    tally.none += answer ? 0 : 1;
    tally.inside += inner ? 1 : 0;
    tally.sure += sure ? 1 : 0;
    tally.sureAndGood += sure && good >= goodOverlap ? 1 : 0;
    if (const auto other = contourQuad(scene.picture))
        tally.contour += overlapOf(*other, scene.sheet);
    if (times)
        times->measure(scene.picture);
    if (good >= goodOverlap || folder.empty())
        return;
    std::printf("  %s %u: %s: overlap %.3f, confidence %.2f%s\n",
                desktops::names[desk],
                seed,
                scene.name.c_str(),
                good,
                answer ? answer->confidence : 0,
                inner ? ", INSIDE" : "");
    keep(fileName(folder, desktops::names[desk], seed, answer ? "wrong" : "none"),
         scene.picture,
         &scene.sheet,
         answer ? &*answer : nullptr);
}

void judgeEmpty(size_t desk, unsigned seed, const std::string& folder, Tally& tally)
{
    const cv::Mat picture = makeEmptyDesk(static_cast<desktops::Kind>(desk), frame, seed);
    const std::optional<Outline> answer = mirvak::findOutline(picture);
    ++tally.empty;
    tally.falseOnEmpty += answer ? 1 : 0;
    tally.contourFalse += contourQuad(picture) ? 1 : 0;
    if (answer && !folder.empty())
        keep(fileName(folder, desktops::names[desk], seed, "empty"), picture, nullptr, &*answer);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    cv::setNumThreads(1);
    const unsigned scenes = argc > 1 ? static_cast<unsigned>(std::atoi(argv[1])) : 12;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
    const std::string folder = argc > 3 ? argv[3] : "";
    std::vector<Tally> tallies(desktops::names.size());
    Tally all;
    Times times;
    constexpr unsigned timed = 3, emptyShare = 3; // of each desk; empty ones to each sheet
    for (size_t desk = 0; desk < tallies.size(); ++desk) {
        for (unsigned i = 0; i < scenes; ++i)
            judgeSheet(desk, seed + i, folder, tallies[desk], i < timed ? &times : nullptr);
        for (unsigned i = 0; i < (scenes + emptyShare - 1) / emptyShare; ++i)
            judgeEmpty(desk, seed + i, folder, tallies[desk]);
        all.add(tallies[desk]);
    }
    std::printf("%-12s %8s %7s %6s %7s %11s %7s %9s %12s %6s\n",
                "desk",
                "overlap",
                "< 0.95",
                "none",
                "inside",
                "sure",
                "truly",
                "contour",
                "false",
                "other");
    for (size_t desk = 0; desk < tallies.size(); ++desk)
        tallies[desk].print(desktops::names[desk]);
    all.print("all");
    times.print();
    return 0;
}

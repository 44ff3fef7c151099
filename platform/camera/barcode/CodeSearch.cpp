#include "CodeSearch.h"

#include "BarsGoOn.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

using helper::Decoders;

constexpr double smallBox = 260;        // pixels; what has a shorter side is enlarged
constexpr double viewAtMost = 3e6;      // pixels of one view
constexpr double largeViewAtMost = 1e6; // where the candidate fills the frame
constexpr double filling = 0.4;         // of the frame
constexpr double partsAtMost = 10e6;    // pixels of all views of the candidates
constexpr double harderAtMost = 6e6;    // of the second try
constexpr double worthALook = 0.15;     // likeness that every code reached in all made pictures
constexpr double worthATry = 0.28;      // likeness that few lines of text reach
constexpr double surelyCode = 0.5;      // and hardly any
constexpr double noisy = 6;             // grey values
constexpr double largeFrame = 4e6;      // pixels
constexpr float around = 0.3F;          // of a place's longer side
constexpr double smoothingOfNoise = 0.5;

// The scale at which the modules of a candidate are a few pixels wide.
double scaleFor(const Candidate& candidate)
{
    const double level = 1.0 / (1 << candidate.halvings);
    const double shorter = std::min(candidate.box.size.width, candidate.box.size.height) * level;
    return shorter < smallBox ? 2 * level : level;
}

bool isInside(const cv::Point2f& point, const Candidate& candidate)
{
    std::array<cv::Point2f, 4> outline;
    candidate.box.points(outline.data());
    return cv::pointPolygonTest(outline, point, false) >= 0;
}

cv::Point2f middleOf(const cv::Rect2f& box)
{
    return (box.tl() + box.br()) / 2;
}

// Whether the code is what the candidate is about, and not one of several in it.
bool covers(const SeenCode& code, const Candidate& candidate)
{
    const cv::Rect2f& box = code.best.box;
    const float shorter = std::min(candidate.box.size.width, candidate.box.size.height);
    return isInside(middleOf(box), candidate) && std::max(box.width, box.height) > 0.4F * shorter;
}

cv::Rect2f boxOf(const helper::Reading& reading, const View& view)
{
    std::array<cv::Point2f, 4> corners;
    for (size_t i = 0; i < corners.size(); ++i)
        corners[i] = view.inFrame({double(reading.points[2 * i]), double(reading.points[2 * i + 1])});
    const auto [left, right] = std::minmax({corners[0].x, corners[1].x, corners[2].x, corners[3].x});
    const auto [top, bottom] = std::minmax({corners[0].y, corners[1].y, corners[2].y, corners[3].y});
    // A code that one scan line met has no height of its own.
    return {left, top, std::max(1.F, right - left), std::max(1.F, bottom - top)};
}

} // namespace

CodeSearch::CodeSearch(const GreyFrame& frame, DecoderPool& pool)
    : frame_(frame), pool_(pool), candidates_(locateCodes(frame)),
      sightings_([this](const Sighting& a, const Sighting& b) { return goOn(a, b); })
{
}

void CodeSearch::run(const std::vector<Look>& looks)
{
    std::vector<DecoderPool::Job> jobs;
    for (const Look& look : looks) {
        DecoderPool::Job job;
        job.size = look.view.size;
        job.decoders = look.decoders;
        job.step = look.step;
        job.draw = [&](cv::Mat& canvas) { draw(frame_, look.view, canvas); };
        job.read = [&, pass = ++passes_](const helper::Reading& reading, std::string_view bytes) {
            note(look, pass, reading, bytes);
        };
        jobs.push_back(std::move(job));
    }
    pool_.run(jobs);
}

void CodeSearch::note(const Look& look, int pass, const helper::Reading& reading, std::string_view bytes)
{
    Sighting sighting;
    sighting.symbology = reading.symbology;
    sighting.bytes = std::string(bytes);
    sighting.isText = reading.isText;
    sighting.lines = reading.agreeing;
    sighting.pass = 2 * pass + (reading.byZBar ? 1 : 0);
    sighting.box = boxOf(reading, look.view);
    sighting.homes = homesOf(sighting.box);
    sighting.ofPart = look.ofPart;
    sightings_.add(std::move(sighting));
}

std::vector<int> CodeSearch::homesOf(const cv::Rect2f& box) const
{
    std::vector<int> homes;
    for (size_t i = 0; i < candidates_.size(); ++i) {
        if (isInside(middleOf(box), candidates_[i]))
            homes.push_back(static_cast<int>(i));
    }
    return homes;
}

bool CodeSearch::goOn(const Sighting& a, const Sighting& b) const
{
    return std::any_of(a.homes.begin(), a.homes.end(), [&](int home) {
        return std::find(b.homes.begin(), b.homes.end(), home) != b.homes.end() &&
               barsGoOn(frame_, candidates_[static_cast<size_t>(home)], middleOf(a.box), middleOf(b.box));
    });
}

void CodeSearch::lookAtWhole()
{
    std::vector<Look> looks;
    if (frame_.noise() <= noisy) // in noise it would take long and find nothing that the reduced one does not
        looks = looksAtBars();
    looks.push_back({View::ofLevel(frame_, 0), Decoders::matrices, 1, false});
    looks.push_back({View::ofLevel(frame_, 1), Decoders::bars | Decoders::matrices, 1, false});
    run(looks);
}

// The frame in its own size, which takes half of the time of all looks at a large one: there, the places that
// look like bars, as they lie.
std::vector<CodeSearch::Look> CodeSearch::looksAtBars() const
{
    std::vector<Look> whole{{View::ofLevel(frame_, 0), Decoders::bars, 2, false}};
    const double frame = frame_.size().area();
    if (frame < largeFrame)
        return whole;
    std::vector<Look> looks;
    double pixels = 0;
    for (const Candidate& candidate : candidates_) {
        if (!candidate.isBars || candidate.likeness < worthALook || fills(candidate)) // the half shows it
            continue;
        const cv::Rect2f box = candidate.box.boundingRect2f();
        // The place may be a part of the code: two of five is read out of the middle of a longer number, too.
        const float margin = around * std::max(box.width, box.height);
        const cv::Size2f size(box.width + 2 * margin, box.height + 2 * margin);
        looks.push_back({View::ofBox({middleOf(box), size, 0}, 1), Decoders::bars});
        pixels += size.area();
    }
    return pixels > frame / 2 ? whole : looks;
}

void CodeSearch::lookAtCandidates()
{
    std::vector<Look> looks;
    double pixels = 0;
    for (const Candidate& candidate : unread()) {
        if (candidate.likeness < worthALook)
            break;
        Look look{viewOf(candidate, 1), Decoders::bars | Decoders::matrices};
        pixels += look.view.size.area();
        if (pixels > partsAtMost)
            break;
        looks.push_back(look);
    }
    run(looks);
}

// Enlarged, and steadied against noise: by averages along the bars, or with one threshold for all.
void CodeSearch::lookHarder()
{
    constexpr std::uint32_t decoders = Decoders::bars | Decoders::matrices | Decoders::oneBar;
    std::vector<Look> looks;
    double pixels = 0;
    for (const Candidate& candidate : unread()) {
        if (candidate.likeness < worthATry)
            break;
        Look large{viewOf(candidate, 1.5), decoders};
        pixels += large.view.size.area();
        if (pixels > harderAtMost)
            break;
        looks.push_back(large);
        looks.push_back({viewOf(candidate, 0.75), decoders | Decoders::evenly});
        if (candidate.isBars) {
            Look averaged{viewOf(candidate, 1), Decoders::bars | Decoders::oneBar};
            averaged.view.smoothedUp = true;
            looks.push_back(averaged);
        }
    }
    run(looks);
}

// Some decoders walk from the middle outwards and lose their way at one unlucky square: a little turn brings
// them past it.
void CodeSearch::lookAgain()
{
    std::vector<Look> looks;
    double pixels = 0;
    for (Candidate candidate : unread()) {
        const cv::Size2f size = candidate.box.size;
        if (candidate.likeness < surelyCode || candidate.isBars ||
            std::max(size.width, size.height) > 1.5F * std::min(size.width, size.height))
            continue;
        const float angle = candidate.box.angle;
        for (const float turn : {-2.F, 0.F, 2.F}) {
            candidate.box.angle = angle + turn;
            Look look{viewOf(candidate, 2), Decoders::matrices};
            pixels += look.view.size.area();
            looks.push_back(look);
            look.view.sharpened = !look.view.sharpened;
            looks.push_back(look);
        }
        if (pixels > harderAtMost)
            break;
    }
    run(looks);
}

void CodeSearch::confirmWeakOnes()
{
    std::vector<Look> looks;
    for (const SeenCode& code : sightings_.codes()) {
        if (code.isCredible() || !isLinear(code.best.symbology))
            continue;
        const cv::Rect2f& box = code.best.box;
        const float margin = 0.15F * std::max(box.width, box.height) + 8;
        const cv::RotatedRect around(
            middleOf(box), cv::Size2f(box.width + 2 * margin, box.height + 2 * margin), 0);
        constexpr std::uint32_t decoders = Decoders::bars | Decoders::oneBar;
        looks.push_back({View::ofBox(around, 1.4), decoders});
        looks.push_back({View::ofBox(around, 1), decoders});
        if (!code.best.homes.empty())
            looks.push_back(
                {viewOf(candidates_[static_cast<size_t>(code.best.homes.front())], 1.2), decoders});
    }
    run(looks);
}

std::vector<Candidate> CodeSearch::unread() const
{
    const std::vector<SeenCode> read = sightings_.credible();
    std::vector<Candidate> result;
    for (const Candidate& candidate : candidates_) {
        if (std::none_of(
                read.begin(), read.end(), [&](const SeenCode& code) { return covers(code, candidate); }))
            result.push_back(candidate);
    }
    return result;
}

// Much of a large frame: a code's modules are many pixels wide then, and most such places are cloth.
bool CodeSearch::fills(const Candidate& candidate) const
{
    const double frame = frame_.size().area();
    return frame >= largeFrame && candidate.box.size.area() > frame * filling;
}

// The candidate upright, `enlarged` times the scale at which the modules should be a few pixels wide.
View CodeSearch::viewOf(const Candidate& candidate, double enlarged) const
{
    const double most =
        std::sqrt((fills(candidate) ? largeViewAtMost : viewAtMost) / candidate.box.size.area());
    View view = View::ofBox(candidate.box, std::min(enlarged * scaleFor(candidate), most));
    view.inverted = candidate.onDark;
    view.sharpened = true;
    if (frame_.noise() > noisy)
        view.smoothing = smoothingOfNoise;
    return view;
}

} // namespace mirvak

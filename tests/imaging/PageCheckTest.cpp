// Films with known events through the library, looked at as the program does: every fifth frame.
#include "Codec.h"
#include "PageFilm.h"
#include "mirvakcamera.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <functional>

using made::Desk;
using made::Moment;

namespace {

constexpr double threshold = 0.32; // as the program asks
constexpr int framesPerCheck = 5;
constexpr double soonEnough = 0.7; // seconds from the moment when the page lies still and the hand is gone

using Film = std::function<Moment(double seconds)>;

double ease(double t)
{
    t = std::clamp(t, 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

/// An arm that is inside between `in` and `out`, half a second each for coming and going.
struct Visit
{
    double in, out;
    cv::Point2d tips;
    double fromDegrees;

    cv::Point2d away(double share) const
    {
        const double angle = fromDegrees * CV_PI / 180;
        return 430 * share * cv::Point2d(std::cos(angle), std::sin(angle));
    }
    void show(double t, Moment& moment) const
    {
        if (t > in && t < out)
            moment.arm = {tips + away(1 - ease((t - in) / 0.5) * ease((out - t) / 0.5)), fromDegrees};
    }
};

Moment::Lying carried(Moment::Lying sheet, const Visit& hand, double share)
{
    sheet.middle += hand.away(ease(share));
    return sheet;
}

/// The library, shown pictures at given times.
class Watcher
{
public:
    /// @return whether a new page was reported
    bool sees(const cv::Mat& picture, double seconds, bool reset = false)
    {
        mirvak::Image image;
        image.pixels = picture;
        image.taken = std::chrono::steady_clock::time_point(
            std::chrono::microseconds(1'000'000'000 + std::lround(1e6 * seconds)));
        bool flag = false;
        EXPECT_EQ(library_.MirvakImage_CheckPage(&image, flag, difference_, reset, threshold), MIRVAK_OK);
        EXPECT_TRUE(difference_ >= 0 && difference_ <= 1) << difference_;
        return !flag;
    }
    double difference() const { return difference_; }

private:
    MirvakCamera library_;
    double difference_ = 0;
};

struct Showing
{
    cv::Size frame{640, 480};
    int framesPerSecond = 30;
    Desk desk = Desk::wood;
    double noise = 2;
};

/// One report for each page, soon after it lies still, and no other. `stills`: when, in seconds.
void expectReports(const char* name,
                   const Film& film,
                   double seconds,
                   const std::vector<double>& stills,
                   const Showing& showing)
{
    made::PageFilm camera(showing.frame, showing.desk, showing.noise);
    Watcher watcher;
    std::vector<double> times;
    const int rate = showing.framesPerSecond;
    for (int frame = 0; frame < seconds * rate; frame += framesPerCheck) {
        const double t = static_cast<double>(frame) / rate;
        if (watcher.sees(camera.picture(film(t)), t))
            times.push_back(t);
    }
    ASSERT_EQ(times.size(), stills.size()) << name << ::testing::PrintToString(times);
    for (size_t i = 0; i < times.size(); ++i)
        EXPECT_TRUE(times[i] >= stills[i] && times[i] <= stills[i] + soonEnough) << name << times[i];
}

/// A page is taken off the pile, one is laid upon it, that one is taken away again.
const std::vector<double> turningStills{0, 3.2, 6.3, 9.2};
constexpr double turningSeconds = 10.5;

Moment turning(double t, const cv::Mat& first, const cv::Mat& second, const cv::Mat& third)
{
    const cv::Point2d middle(205, 157);
    const Visit takes{2, 3.2, {260, 220}, 35}, lays{4.9, 6.3, {150, 190}, 170}, lifts{8, 9.2, {190, 90}, 275};
    Moment moment;
    moment.sheets.push_back({&second, middle, 0.8});
    if (t < 3.2)
        moment.sheets.push_back(carried({&first, middle, 0.8}, takes, (t - 2.5) / 0.7));
    if (t > 4.9 && t < 9.2)
        moment.sheets.push_back(
            carried({&third, middle, 0.8}, t < 7 ? lays : lifts, t < 7 ? (5.5 - t) / 0.6 : (t - 8.5) / 0.7));
    for (const Visit& visit : {takes, lays, lifts})
        visit.show(t, moment);
    return moment;
}

/// Everything that is no new page, one after the other and partly at once.
Moment unrest(double t, const cv::Mat& page)
{
    const Visit passes{8, 8.9, {230, 140}, 20}, rests{10, 12.3, {262, 210}, 15},
        nudges{13, 14.6, {110, 200}, 150};
    Moment moment;
    const double nudged = ease((t - 13.6) / 0.3);
    moment.sheets.push_back({&page, cv::Point2d(210, 157) + nudged * cv::Point2d(4, -3), 1.5 * nudged});
    for (const Visit& visit : {passes, rests, nudges})
        visit.show(t, moment);
    moment.beat = t < 4 ? 0.1 : 0.02;
    moment.beatPhase = 0.9 * t;
    moment.brightness = 1 - 0.35 * ease(t - 2) + 0.3 * ease(t - 5) + (t < 4 ? 0.06 * std::sin(17 * t) : 0);
    moment.white = {1 + 0.12 * ease((t - 5) / 2), 1, 1 - 0.12 * ease((t - 5) / 2)};
    moment.shadow = t > 6 && t < 8 ? (t - 6) / 2 : -1;
    const double breath = t > 8 && t < 20 ? std::sin(2 * CV_PI * t / 2.5) : 0;
    moment.zoom = 1 + 0.02 * breath;
    moment.blur = 0.8 * std::abs(breath);
    moment.shake = {std::sin(40 * t), std::cos(31 * t)};
    return moment;
}

Moment stormy(Moment moment, double t)
{
    const Moment weather = unrest(std::fmod(t, 4) + 8.9, cv::Mat());
    moment.beat = 0.1;
    moment.beatPhase = 1.7 * t;
    moment.brightness = 1 - 0.3 * ease(std::fmod(t, 4) - 1);
    moment.zoom = weather.zoom;
    moment.blur = weather.blur;
    moment.shake = weather.shake;
    return moment;
}

/// Lays the sheet on the desk or takes it away, from the side that `hand` comes from.
struct Errand
{
    Moment::Lying place;
    Visit brings, takes;
};

Moment errands(double t, const std::vector<Errand>& all)
{
    Moment moment;
    for (const Errand& errand : all) {
        const double there = ease((t - errand.brings.in - 0.1) / 0.6),
                     gone = ease((t - errand.takes.in - 0.6) / 0.6);
        if (t > errand.brings.in && t < errand.takes.out)
            moment.sheets.push_back(there < 1 ? carried(errand.place, errand.brings, 1 - there)
                                              : carried(errand.place, errand.takes, gone));
        errand.brings.show(t, moment);
        errand.takes.show(t, moment);
    }
    if (!moment.sheets.empty()) { // the camera's exposure and white balance follow what lies there
        moment.brightness = 0.8;
        moment.white = {0.95, 1, 1.08};
    }
    return moment;
}

/// A page of text, A4; another seed is another text on the same lines.
cv::Mat textSheet(unsigned seed, int lineMm = 6)
{
    return made::textPage({840, 1188}, lineMm * 4, seed);
}

TEST(PageFilm, EveryPageOfAPileIsReportedOnceSoonAfterItLiesStill)
{
    const cv::Mat text = textSheet(1), other = textSheet(2), small = textSheet(3, 4),
                  smaller = textSheet(4, 4);
    const auto expectTurning = [](const char* name,
                                  const cv::Mat& a,
                                  const cv::Mat& b,
                                  const cv::Mat& c,
                                  const Showing& showing,
                                  bool isStormy = false) {
        const auto film = [&](double t) {
            const Moment moment = turning(t, a, b, c);
            return isStormy ? stormy(moment, t) : moment;
        };
        expectReports(name, film, turningSeconds, turningStills, showing);
    };
    // Pages in the same place with the same lines, which only their words tell apart.
    expectTurning("text", text, other, text, {});
    expectTurning("small", small, smaller, text, {{640, 480}, 15, Desk::light});
    expectTurning("large", text, other, small, {{816, 612}, 15, Desk::dark, 4});
    expectTurning("cloth", small, smaller, small, {{1024, 768}, 15, Desk::checked});
    for (const int rate : {30, 15}) // in flicker and while the lens breathes
        expectTurning("stormy", text, other, text, {{640, 480}, rate}, true);
}

TEST(PageFilm, LightLensHandAndANudgeAreNoNewPage)
{
    const cv::Mat text = textSheet(1, 4), other = textSheet(2, 5);
    expectReports("text", [&](double t) { return unrest(t, text); }, 20, {0}, {});
    expectReports(
        "other", [&](double t) { return unrest(t, other); }, 20, {0}, {{640, 480}, 15, Desk::checked});
    const std::vector<cv::Scalar> skins{{236, 190, 165}, {214, 160, 132}, {120, 80, 60}};
    const std::vector<cv::Scalar> sleeves{{230, 230, 232}, {52, 64, 92}, {90, 90, 90}};
    const std::vector<Desk> desks{Desk::wood, Desk::light, Desk::dark};
    for (size_t i = 0; i < skins.size(); ++i) { // one that rests
        const Visit visit{1.5, 5, {262, 210}, 20 + 100.0 * static_cast<double>(i)};
        const auto film = [&](double t) {
            Moment moment;
            moment.sheets = {{&text, {210, 157}, 0.5}};
            visit.show(t, moment);
            if (moment.arm) {
                moment.arm->skin = skins[i];
                moment.arm->cloth = sleeves[i];
            }
            return moment;
        };
        expectReports("hand", film, 6, {0}, {{640, 480}, 15, desks[i]});
    }
}

TEST(PageFilm, TheHandThatHoldsANewPageAndTheLensThatSearchesAreWaitedFor)
{
    const cv::Mat text = textSheet(1), other = textSheet(2);
    const Moment::Lying first{&text, {205, 157}, 0.5}, second{&other, {205, 157}, 0.5};
    const auto heldUntil = [&](double end) {
        const Visit lays{2, end, {262, 210}, 20};
        return [&, lays](double t) {
            Moment moment;
            moment.sheets = {first};
            if (t > 2)
                moment.sheets.push_back(carried(second, lays, (2.5 - t) / 0.5));
            lays.show(t, moment);
            return moment;
        };
    };
    expectReports("held", heldUntil(4), 6, {0, 4}, {});
    expectReports("held on", heldUntil(60), 7, {0, 4}, {}); // but not for ever: it may belong to the page
    const auto unsharpUntil = [&](double end, const Moment::Lying& next) {
        return [&, end, next](double t) {
            Moment moment;
            moment.sheets = {t < 2 ? first : next};
            moment.blur = t > 2 && t < end ? 2.6 : 0;
            return moment;
        };
    };
    expectReports("unsharp", unsharpUntil(3.2, second), 6, {0, 3.2}, {});
    const cv::Mat table = made::tablePage({840, 1188}); // can be told from a text even then
    expectReports("stays unsharp", unsharpUntil(60, {&table, {205, 157}, 0.5}), 7, {0, 4}, {});
}

TEST(PageFilm, TheBareDeskIsNoPageAndThePagePutBackNoNewOne)
{
    const cv::Mat text = textSheet(1), receipt = made::textPage({300, 800}, 20, 5),
                  front = made::cardPage({342, 216}), back = made::tablePage({342, 216});
    const auto visit = [](double t, double degrees) { return Visit{t, t + 1.4, {215, 190}, degrees}; };
    const std::vector<Errand> all{{{&text, {205, 157}, 0.5}, visit(1, 20), visit(4, 40)},
                                  {{&text, {209, 154}, 1.7}, visit(7, 160), visit(9, 80)},
                                  {{&receipt, {215, 150}, -3}, visit(11.5, 30), visit(14, 270)},
                                  {{&front, {210, 140}, 2}, visit(16, 30), visit(18, 100)},
                                  {{&back, {210, 140}, 2}, visit(20, 200), visit(22, 40)}};
    for (const Desk desk : {Desk::wood, Desk::dark, Desk::noisy})
        expectReports("errands",
                      [&](double t) { return errands(t, all); },
                      24,
                      {2.4, 12.9, 17.4, 21.4},
                      {{640, 480}, desk == Desk::wood ? 30 : 15, desk});
}

/// The film that the virtual desk plays for automatic scanning, and when a page lies still in it.
TEST(PageFilm, TheVirtualDeskTurnsEachPageOnce)
{
    constexpr double framesPerSecond = 15;
    constexpr int frames = 138, rounds = 2;
    std::ifstream truth(LUMRO_DESK_DIR "/page-turn.csv");
    std::string line;
    std::getline(truth, line);
    std::vector<std::pair<int, int>> stills;
    while (std::getline(truth, line)) {
        int page = 0, first = 0, last = 0;
        ASSERT_EQ(std::sscanf(line.c_str(), "%d,%d,%d", &page, &first, &last), 3) << line;
        stills.emplace_back(first, last);
    }
    ASSERT_EQ(stills.size(), 4U); // the film ends with the page that it begins with
    const size_t firstRound = stills.size();
    for (size_t i = 1; i < firstRound; ++i)
        stills.emplace_back(stills[i].first + frames, stills[i].second + frames);
    Watcher watcher;
    size_t reported = 0;
    for (int frame = 0; frame < rounds * frames; frame += framesPerCheck) {
        char name[80];
        std::snprintf(name, sizeof name, "/page-turn/%04d.jpg", frame % frames);
        const auto picture = mirvak::readImage(LUMRO_DESK_DIR + std::string(name));
        ASSERT_TRUE(picture) << name;
        if (!watcher.sees(picture->pixels, frame / framesPerSecond))
            continue;
        ASSERT_LT(reported, stills.size()) << frame;
        EXPECT_GE(frame, stills[reported].first);
        EXPECT_LE(frame, stills[reported].first + soonEnough * framesPerSecond);
        ++reported;
    }
    EXPECT_EQ(reported, stills.size());
}

TEST(PageCheck, ForgetsThePageWhenToldToAndStartsAnewAfterABreak)
{
    const cv::Mat text = textSheet(1);
    Moment moment;
    moment.sheets = {{&text}};
    made::PageFilm camera({640, 480}, Desk::wood);
    Watcher watcher;
    double seconds = 0;
    const auto reportsIn = [&](int checks) {
        int reports = 0;
        for (int i = 0; i < checks; ++i)
            reports += watcher.sees(camera.picture(moment), seconds += 1.0 / 6) ? 1 : 0;
        return reports;
    };
    EXPECT_EQ(reportsIn(6), 1);
    EXPECT_LT(watcher.difference(), 0.1);
    EXPECT_FALSE(watcher.sees(camera.picture(moment), seconds += 1.0 / 6, true));
    EXPECT_DOUBLE_EQ(watcher.difference(), 1);
    EXPECT_EQ(reportsIn(6), 1);
    seconds += 60; // the same page as before the break
    EXPECT_EQ(reportsIn(6), 0);
    moment.sheets.front().degrees = 180;
    seconds += 60; // another one; the two looks about the break prove no rest
    EXPECT_EQ(reportsIn(2), 0);
    EXPECT_EQ(reportsIn(4), 1);
}

} // namespace

// Films with known events through the library, looked at as the program does: every fifth frame.
#include "PageCheck.h"
#include "Image.h"
#include "PageFilm.h"
#include "mirvakcamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
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

/// Plays the film and says when a new page was reported, in seconds.
std::vector<double> reports(const Film& film, double seconds, int framesPerSecond, made::PageFilm& camera)
{
    MirvakCamera library;
    std::vector<double> times;
    mirvak::Image image;
    for (int frame = 0; frame < seconds * framesPerSecond; frame += framesPerCheck) {
        const double t = static_cast<double>(frame) / framesPerSecond;
        image.pixels = camera.picture(film(t));
        image.taken = std::chrono::steady_clock::time_point(
            std::chrono::microseconds(1'000'000'000 + static_cast<long>(1e6 * t)));
        bool flag = false;
        double value = -1;
        EXPECT_EQ(library.MirvakImage_CheckPage(&image, flag, value, false, threshold), MIRVAK_OK);
        EXPECT_TRUE(value >= 0 && value <= 1) << value;
        if (!flag)
            times.push_back(t);
        if (getenv("VERBOSE"))
            std::printf("%6.2f %s %.3f\n", t, flag ? "  " : "**", value);
    }
    return times;
}

struct Showing
{
    cv::Size frame{640, 480};
    int framesPerSecond = 30;
    Desk desk = Desk::wood;
    double noise = 2;
};

/// One report for each page, soon after it lies still, and no other.
void expectReports(const char* name,
                   const Film& film,
                   double seconds,
                   const std::vector<double>& stills,
                   const Showing& showing)
{
    made::PageFilm camera(showing.frame, showing.desk, showing.noise);
    const std::vector<double> times = reports(film, seconds, showing.framesPerSecond, camera);
    std::printf("%s, %d frames/s, %dx%d: frames from still to report:",
                name,
                showing.framesPerSecond,
                showing.frame.width,
                showing.frame.height);
    for (size_t i = 0; i < std::min(times.size(), stills.size()); ++i)
        std::printf(" %.0f", (times[i] - stills[i]) * showing.framesPerSecond);
    std::printf("\n");
    EXPECT_EQ(times.size(), stills.size()) << name << ::testing::PrintToString(times);
    for (size_t i = 0; i < std::min(times.size(), stills.size()); ++i) {
        EXPECT_GE(times[i], stills[i]) << name;
        EXPECT_LE(times[i], stills[i] + soonEnough) << name;
    }
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
        moment.sheets.push_back(carried(
            {&third, middle, 0.8}, t < 7 ? lays : lifts, t < 7 ? (5.5 - t) / 0.6 : (t - 8.5) / 0.7));
    for (const Visit& visit : {takes, lays, lifts})
        visit.show(t, moment);
    return moment;
}

/// Everything that is no new page, one after the other and partly at once.
Moment unrest(double t, const cv::Mat& page)
{
    const Visit passes{8, 8.9, {230, 140}, 20}, rests{10, 12.3, {262, 210}, 15}, nudges{13, 14.6, {110, 200}, 150};
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
    moment.jpeg = 75;
    return moment;
}

/// Lays the sheet on the desk or takes it away, from the side that `hand` comes from.
struct Errand
{
    const cv::Mat* sheet;
    Moment::Lying place;
    Visit brings, takes;
};

Moment errands(double t, const std::vector<Errand>& all)
{
    Moment moment;
    for (const Errand& errand : all) {
        const double there = ease((t - errand.brings.in - 0.1) / 0.6), gone = ease((t - errand.takes.in - 0.6) / 0.6);
        if (t > errand.brings.in && t < errand.takes.out)
            moment.sheets.push_back(there < 1 ? carried(errand.place, errand.brings, 1 - there)
                                              : carried(errand.place, errand.takes, gone));
        errand.brings.show(t, moment);
        errand.takes.show(t, moment);
    }
    return moment;
}

TEST(PageFilm, TheBareDeskIsNoPageAndThePagePutBackNoNewOne)
{
    const cv::Mat english = made::deskPage("03-english-text"), receipt = made::deskPage("08-receipt"),
                  front = made::deskPage("09-card-front"), back = made::deskPage("10-card-back");
    const auto bring = [](double t, double degrees) { return Visit{t, t + 1.4, {215, 190}, degrees}; };
    const auto film = [&](double t) {
        return errands(t,
                       {{&english, {&english, {205, 157}, 0.5}, bring(1.5, 20), bring(5, 40)},
                        {&english, {&english, {209, 154}, 1.7}, bring(8, 160), bring(11, 80)},
                        {&receipt, {&receipt, {215, 150}, -3}, bring(14, 30), bring(17, 270)},
                        {&front, {&front, {210, 140}, 2}, bring(19, 30), bring(22, 100)},
                        {&back, {&back, {210, 140}, 2}, bring(24, 200), bring(27, 40)}});
    };
    for (const Desk desk : {Desk::wood, Desk::light, Desk::dark, Desk::coloured, Desk::noisy})
        for (const int rate : {30, 15})
            expectReports("errands " , film, 30, {2.9, 15.4, 20.4, 25.4}, {{640, 480}, rate, desk});
}

TEST(PageFilm, HandX)
{
    const cv::Mat english = made::deskPage("03-english-text"), other = made::otherWords(english);
    int n=0,bad=0;
    for (const Desk desk : {Desk::wood, Desk::light, Desk::dark, Desk::coloured, Desk::checked, Desk::noisy})
     for (const cv::Scalar& skin : {cv::Scalar{214, 160, 132}, cv::Scalar{236,190,165}, cv::Scalar{120, 80, 60}, cv::Scalar{168,112,82}})
      for (const cv::Scalar& cloth : {cv::Scalar{52, 64, 92}, cv::Scalar{230,230,232}, cv::Scalar{150,40,40}})
       for (double from : {20., 100., 200., 290.}) {
        const auto film = [&](double t) {
          Moment m; m.sheets={{&english,{210,157},0.5}}; Visit v{1.5,5,{210+80*std::cos(from*.01745),157+70*std::sin(from*.01745)},from}; v.show(t,m);
          if(m.arm){m.arm->skin=skin;m.arm->cloth=cloth;} return m; };
        made::PageFilm camera({640,480}, desk, 2);
        auto r=reports(film,6,30,camera); ++n; if(r.size()!=1) { ++bad; printf("desk %d skin %.0f cloth %.0f from %.0f: %zu\n",(int)desk,skin[0],cloth[0],from,r.size()); }
       }
    printf("%d of %d\n",bad,n);
}

TEST(PageFilm, EveryPageOfAPileIsReportedOnceSoonAfterItLiesStill)
{
    const cv::Mat english = made::deskPage("03-english-text"), russian = made::deskPage("05-russian-text"),
                  chinese = made::deskPage("04-chinese-text"), letter = made::deskPage("01-letter"),
                  form = made::deskPage("02-form");
    // Pages in the same place with the same lines, which only their words tell apart.
    const auto sameLines = [&](double t) { return turning(t, english, made::otherWords(english), english); };
    const cv::Mat otherEnglish = made::otherWords(english), otherRussian = made::otherWords(russian),
                  otherChinese = made::otherWords(chinese);
    const auto film = [](const cv::Mat& a, const cv::Mat& b, const cv::Mat& c) {
        return [&](double t) { return turning(t, a, b, c); };
    };
    (void)sameLines;
    expectReports("english", film(english, otherEnglish, english), turningSeconds, turningStills, {});
    expectReports("english", film(english, otherEnglish, english), turningSeconds, turningStills, {{1280, 960}, 15});
    expectReports("chinese", film(chinese, otherChinese, chinese), turningSeconds, turningStills, {{640, 480}, 15, Desk::light});
    expectReports("russian", film(russian, otherRussian, form), turningSeconds, turningStills, {{816, 612}, 30, Desk::dark, 4});
    expectReports("mixed", film(letter, form, chinese), turningSeconds, turningStills, {{816, 612}, 15, Desk::checked});
}

TEST(PageFilm, PagesAreToldApartInFlickerAndWhileTheLensBreathes)
{
    const cv::Mat english = made::deskPage("03-english-text"), other = made::otherWords(english);
    for (const int rate : {30, 15})
        expectReports(
            "storm",
            [&](double t) { return stormy(turning(t, english, other, english), t); },
            turningSeconds,
            turningStills,
            {{640, 480}, rate});
}

TEST(PageFilm, LightLensHandAndANudgeAreNoNewPage)
{
    for (const char* name : {"03-english-text", "02-form"}) {
        const cv::Mat page = made::deskPage(name);
        for (const int rate : {30, 15})
            for (const Desk desk : {Desk::wood, Desk::checked})
                expectReports(name, [&](double t) { return unrest(t, page); }, 22, {0}, {{640, 480}, rate, desk});
    }
}

} // namespace

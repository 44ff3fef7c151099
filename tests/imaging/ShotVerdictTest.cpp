#include "ShotVerdict.h"

#include "EdgeRise.h"
#include "MadePages.h"
#include "ShotLight.h"

#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <functional>

namespace {

using mirvak::Flaw;
using mirvak::Flaws;
using mirvak::Outline;
using mirvak::Verdict;
using State = Verdict::State;
using std::chrono::milliseconds;

constexpr milliseconds interval{66};
const cv::Size frameSize(1280, 960);
const made::Corners whole = made::placed({640, 480}, {560, 790}, 3, 0.03);

cv::Mat frameWith(const cv::Mat& sheet, made::Desk kind = made::Desk::wood, const made::Corners& at = whole)
{
    cv::Mat frame = made::desk(frameSize, kind);
    made::lay(frame, sheet, at, 0.8);
    made::shine(frame, {});
    return frame;
}

/// What is said at the end of a second of these frames.
Verdict verdictOf(const std::function<cv::Mat(int)>& frame, const std::function<Outline(int)>& page)
{
    mirvak::ShotVerdict shot;
    Verdict verdict;
    for (int i = 0; i < 15; ++i)
        verdict = shot.judge(frame(i), page(i), mirvak::ShotVerdict::Time(i * interval));
    return verdict;
}

Verdict verdictOf(const cv::Mat& frame, double confidence = 1)
{
    return verdictOf([&](int) { return frame; }, [=](int) { return Outline{whole, confidence}; });
}

void expectFlaw(const Verdict& verdict, Flaw flaw, const char* what)
{
    EXPECT_EQ(verdict.state, State::flawed) << what;
    EXPECT_EQ(verdict.flaw, flaw) << what;
}

cv::Mat darkPage()
{
    cv::Mat page = made::blankPage({560, 790}) * 0.2;
    page(cv::Rect(80, 80, 200, 60)).setTo(cv::Scalar(235, 230, 225)); // a white title
    return page;
}

/// Smooth areas without an edge, from black to white and of all colours.
cv::Mat photograph()
{
    cv::Mat page(790, 560, CV_8UC3);
    page.forEach<cv::Vec3b>([](cv::Vec3b& pixel, const int* at) {
        pixel = cv::Vec3b(uchar(at[0] / 4 + 20), uchar(60 + at[1] / 4), uchar(225 - at[0] / 4));
    });
    return page;
}

cv::Mat colourfulPage()
{
    cv::Mat page = made::blankPage({560, 790});
    for (int i = 0; i < 6; ++i)
        page(cv::Rect(40, 40 + 120 * i, 480, 90)).setTo(cv::Scalar(40 * i, 230 - 30 * i, 255 * (i % 2)));
    return page;
}

/// A mirror image of a lamp: it adds its light to whatever lies there.
void mirrorLamp(cv::Mat& frame, cv::Point at, double size, double levels = 400)
{
    frame.forEach<cv::Vec3b>([&](cv::Vec3b& pixel, const int* place) {
        const double x = (place[1] - at.x) / size, y = (place[0] - at.y) / size;
        const double more = levels * std::exp(-0.5 * (x * x + y * y));
        for (int c = 0; c < 3; ++c)
            pixel[c] = cv::saturate_cast<uchar>(pixel[c] + more);
    });
}

TEST(ShotVerdict, PagesOfEveryKindAreGoodOnEveryDesk)
{
    const cv::Size size(560, 790);
    const std::pair<const char*, cv::Mat> sheets[] = {{"text", made::textPage(size, 14)},
                                                      {"blank", made::blankPage(size)},
                                                      {"table", made::tablePage(size)},
                                                      {"dark", darkPage()},
                                                      {"photograph", photograph()},
                                                      {"colourful", colourfulPage()}};
    for (const auto& [name, sheet] : sheets) {
        for (const made::Desk kind : {made::Desk::wood, made::Desk::coloured, made::Desk::checked}) {
            const Verdict verdict = verdictOf(frameWith(sheet, kind));
            EXPECT_EQ(verdict.state, State::good) << name << " on " << int(kind) << ": " << int(verdict.flaw);
        }
    }
    // White that the sensor counts no further, with print on it, is no lamp; nor is an even brighter light.
    const cv::Mat text = frameWith(made::textPage(size, 14));
    EXPECT_EQ(verdictOf(text * 1.2).state, State::good);
    cv::Mat bright = frameWith(made::blankPage(size));
    const std::vector<cv::Point> sheet(whole.begin(), whole.end());
    cv::fillConvexPoly(bright, sheet, cv::Scalar::all(243));
    mirrorLamp(bright, {640, 480}, 60, 14); // its paper is about to saturate
    EXPECT_EQ(verdictOf(bright).state, State::good);
    const auto flicker = [&](int i) { return cv::Mat(text * (i % 2 ? 0.85 : 1)); };
    EXPECT_EQ(verdictOf(flicker, [](int) { return Outline{whole, 1}; }).state, State::good);
}

TEST(ShotVerdict, EachThingThatSpoilsAPageIsTold)
{
    for (const cv::Mat& sheet :
         {made::textPage({560, 790}, 14), made::blankPage({560, 790}), colourfulPage()}) {
        const cv::Mat good = frameWith(sheet);
        cv::Mat spoilt;
        cv::GaussianBlur(good, spoilt, {}, 3);
        expectFlaw(verdictOf(spoilt), Flaw::tooBlurred, "focus");
        cv::blur(good, spoilt, {13, 1}); // the edges along the movement stay sharp
        expectFlaw(verdictOf(spoilt), Flaw::tooBlurred, "movement to the side");
        cv::blur(good, spoilt, {1, 13});
        expectFlaw(verdictOf(spoilt), Flaw::tooBlurred, "movement up and down");

        spoilt = good * 0.2;
        expectFlaw(verdictOf(spoilt), Flaw::tooDark, "dim");
        spoilt = good * 0.6;
        made::shine(spoilt, {1, 1, 14, 1});
        expectFlaw(verdictOf(spoilt), Flaw::tooDark, "grainy");

        spoilt = good.clone();
        mirrorLamp(spoilt, {600, 450}, 35);
        expectFlaw(verdictOf(spoilt), Flaw::reflection, "lamp");

        expectFlaw(verdictOf(good, 0.62), Flaw::notSure, "confidence");
        // Little by little, a centimetre in a third of a second on A4.
        const auto frames = [&](int i) {
            const cv::Matx23d shift(1, 0, 4.0 * i, 0, 1, 0);
            cv::Mat frame;
            cv::warpAffine(good, frame, shift, good.size());
            return frame;
        };
        const auto page = [](int i) {
            Outline outline{whole, 1};
            for (cv::Point2d& corner : outline.corners)
                corner.x += 4 * i;
            return outline;
        };
        expectFlaw(verdictOf(frames, page), Flaw::moving, "pushed");
    }
    cv::Mat glossy = frameWith(darkPage());
    mirrorLamp(glossy, {650, 520}, 30);
    expectFlaw(verdictOf(glossy), Flaw::reflection, "lamp on dark paper");
}

TEST(ShotVerdict, APageThatRunsOutOfThePictureIsToldFromAWrongOutline)
{
    const made::Corners outside = made::placed({640, 150}, {560, 790}, 0);
    made::Corners seen = outside;
    seen[0].y = seen[1].y = 0;
    const auto judged = [&](const cv::Mat& frame, double confidence = 1) {
        return verdictOf([&](int) { return frame; }, [&](int) { return Outline{seen, confidence}; });
    };
    const cv::Mat sheet = made::textPage({560, 790}, 14);
    expectFlaw(judged(frameWith(sheet, made::Desk::dark, outside)), Flaw::leavesPicture, "cut off");
    expectFlaw(judged(frameWith(sheet, made::Desk::dark, outside), 0.62), Flaw::notSure, "maybe cut off");
    const made::Corners inside = made::placed({640, 285}, {560, 520}, 0); // its head is 25 px from the border
    expectFlaw(judged(frameWith(sheet, made::Desk::dark, inside)), Flaw::notSure, "an outline on the desk");

    const cv::Mat frame = frameWith(sheet);
    made::Corners other = whole;
    for (cv::Point2d& corner : other)
        corner.x += 40;
    const auto jumping = [&](int i) { return Outline{i / 5 % 2 ? other : whole, 1}; };
    const auto same = [&](int) { return frame; };
    expectFlaw(verdictOf(same, jumping), Flaw::notSure, "an outline that jumps, but no page that moves");
}

TEST(ShotVerdict, NothingIsSaidWithoutAPageAndNoPictureEndsTheProgram)
{
    mirvak::ShotVerdict shot;
    mirvak::ShotVerdict::Time time{};
    const cv::Mat empty = made::desk(frameSize, made::Desk::wood);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(shot.judge(empty, std::nullopt, time += interval).state, State::noPage);
    for (const cv::Size size : {cv::Size(1, 1), cv::Size(2, 3000), cv::Size(3000, 2), cv::Size(70, 64)}) {
        for (const int level : {0, 255}) {
            const cv::Mat frame(size, CV_8UC3, cv::Scalar::all(level));
            const double right = size.width - 1, foot = size.height - 1;
            const Outline page{{{{0, 0}, {right, 0}, {right, foot}, {0, foot}}}, 1};
            for (int i = 0; i < 8; ++i)
                EXPECT_NE(shot.judge(frame, page, time += interval).state, State::noPage);
        }
    }
}

TEST(ShotVerdict, APageThatIsNotFoundButLeavesThePictureIsToldOf)
{
    mirvak::ShotVerdict shot;
    mirvak::ShotVerdict::Time time{};
    const cv::Mat frame = frameWith(made::textPage({560, 790}, 14));
    const auto after = [&](int frames, const std::optional<Outline>& page, bool mayLeave) {
        Verdict verdict;
        for (int i = 0; i < frames; ++i)
            verdict = shot.judge(frame, page, time += interval, mayLeave);
        return verdict;
    };
    EXPECT_EQ(after(2, std::nullopt, true).state, State::looking) << "a moment is no proof";
    expectFlaw(after(15, std::nullopt, true), Flaw::leavesPicture, "half of a page");
    EXPECT_EQ(after(45, Outline{whole, 1}, false).state, State::good) << "moved back";
    after(15, std::nullopt, true);
    EXPECT_EQ(after(30, std::nullopt, false).state, State::noPage) << "taken away";
}

TEST(ShotVerdict, ACornerBeyondTheBorderIsOutOfThePictureOnEverySide)
{
    const cv::Mat frame = frameWith(made::textPage({560, 790}, 14));
    for (const auto& [corner, to] : {std::pair(size_t(0), cv::Point2d(-20, 100)),
                                     {size_t(1), cv::Point2d(900, -20)},
                                     {size_t(2), cv::Point2d(frameSize.width + 20, 860)},
                                     {size_t(3), cv::Point2d(400, frameSize.height + 20)}}) {
        made::Corners outside = whole;
        outside[corner] = to;
        expectFlaw(verdictOf([&](int) { return frame; },
                             [&](int) {
                                 return Outline{outside, 1};
                             }),
                   Flaw::leavesPicture,
                   "one corner");
    }
}

TEST(ShotVerdict, AfterAPauseNothingOfWhatWasSeenBeforeCounts)
{
    const cv::Mat good = frameWith(made::textPage({560, 790}, 14));
    mirvak::ShotVerdict shot;
    mirvak::ShotVerdict::Time time{};
    for (int i = 0; i < 15; ++i)
        shot.judge(good * 0.2, Outline{whole, 1}, time += interval);
    EXPECT_EQ(shot.judge(good, Outline{whole, 1}, time += interval).state, State::flawed);
    EXPECT_EQ(shot.judge(good, Outline{whole, 1}, time += milliseconds(2000)).state, State::looking);
}

TEST(ShotLight, WhatWasTooDarkStaysSoUntilItIsClearlyLighter)
{
    const auto isDark = [](int level, double noise, bool already) {
        const cv::Mat frame(frameSize, CV_8UC3, cv::Scalar::all(level));
        mirvak::ShotLook look;
        look.build(frame, Outline{whole, 1});
        return mirvak::isTooDark(look, noise, already);
    };
    const auto both = [&](int level, double noise) {
        return std::pair(isDark(level, noise, false), isDark(level, noise, true));
    };
    using Pair = std::pair<bool, bool>; // of a page that was not, and of one that was
    EXPECT_EQ(both(70, 0), Pair(true, true));
    EXPECT_EQ(both(86, 0), Pair(false, true));
    EXPECT_EQ(both(110, 0), Pair(false, false));
    EXPECT_EQ(both(200, 11), Pair(true, true));
    EXPECT_EQ(both(200, 9), Pair(false, true)) << "noise";
    EXPECT_EQ(both(200, 8), Pair(false, false));
}

TEST(ShotLight, ADarkPageIsJudgedByItsLightPrintHoweverLittle)
{
    cv::Mat frame(frameSize, CV_8UC3, cv::Scalar::all(30));
    for (const int x : {480, 640, 800}) // a hundredth of the picture
        for (const int y : {220, 480, 740})
            frame(cv::Rect(x, y, 24, 24)).setTo(cv::Scalar::all(220));
    const auto isDark = [](const cv::Mat& picture) {
        mirvak::ShotLook look;
        look.build(picture, Outline{whole, 1});
        return mirvak::isTooDark(look, 0, false);
    };
    EXPECT_FALSE(isDark(frame));
    EXPECT_TRUE(isDark(frame * 0.3));
}

/// Of frames with these flaws, one letter each: what is told, one letter a frame ('-' nothing, '+' good).
std::string told(mirvak::VerdictHold& hold, const std::string& frames)
{
    static mirvak::VerdictHold::Time time{};
    const std::string letters = "lmdbrn";
    std::string words;
    for (const char frame : frames) {
        time += milliseconds(100);
        Flaws flaws{};
        if (letters.find(frame) != std::string::npos)
            flaws[letters.find(frame)] = true;
        const Verdict verdict = frame == ' ' ? hold.missed(time) : hold.seen(flaws, time);
        words += verdict.state == State::flawed ? letters[size_t(verdict.flaw)]
                 : verdict.state == State::good ? '+'
                                                : '-';
    }
    return words;
}

TEST(VerdictHold, WordsComeLateStayReadableAndDoNotFlicker)
{
    mirvak::VerdictHold hold;
    EXPECT_EQ(told(hold, "........"), "----++++") << "a new page is looked at first";
    EXPECT_EQ(told(hold, "b....b...m.."), "++++++++++++") << "single frames";
    const std::string lasting = told(hold, "bbbbbb....................");
    EXPECT_EQ(lasting.substr(0, 2), "++");
    EXPECT_EQ(lasting.find('b'), lasting.find_first_not_of('+'));
    EXPECT_GE(std::count(lasting.begin(), lasting.end(), 'b'), 15) << "a second and a half";
    EXPECT_EQ(lasting.back(), '+');
    const std::string trembling = told(hold, "bbbbbbb.bb.bbb.b.bb.bbb.bb.bbb.bb");
    EXPECT_EQ(trembling.find_first_not_of('b', trembling.find('b')), std::string::npos);
    const std::string worse = told(hold, "mmmmmmmmmmmmmmmmmmmmm");
    EXPECT_EQ(worse.back(), 'm');
    EXPECT_EQ(worse.find_first_not_of("bm"), std::string::npos);
    told(hold, "bbbbbbbbbbbbbbbbbbbb");
    const std::string other = told(hold, "mmmmmm....................");
    EXPECT_GE(std::count(other.begin(), other.end(), 'm'), 15) << "in the place of a flaw, as long";
    mirvak::VerdictHold doubtful;
    EXPECT_EQ(told(doubtful, "bbb.b.."), "------+") << "neither told nor good yet";
}

TEST(VerdictHold, AMissedOutlineIsForgivenForAMoment)
{
    mirvak::VerdictHold hold;
    told(hold, "bbbbbbbb");
    EXPECT_EQ(told(hold, "    b"), "bbbbb");
    EXPECT_EQ(told(hold, "         "), "bbbbb----") << "the page is gone";
    EXPECT_EQ(told(hold, "......"), "----++") << "a new page begins anew";
}

TEST(VerdictHold, AFrameAfterAPauseIsOneFrame)
{
    mirvak::VerdictHold hold;
    mirvak::VerdictHold::Time time{};
    for (int i = 0; i < 10; ++i)
        EXPECT_NE(hold.seen({}, time += milliseconds(100)).state, State::flawed);
    Flaws blurred{};
    blurred[size_t(Flaw::tooBlurred)] = true;
    EXPECT_EQ(hold.seen(blurred, time += milliseconds(900)).state, State::good);
}

TEST(EdgeRise, TellsTheLensOfEdgesAndThinLines)
{
    for (const double sigma : {1.5, 2.5, 4.0}) {
        for (const bool isLine : {false, true}) {
            cv::Mat row(1, 200, CV_32F, cv::Scalar(200)), soft;
            row.colRange(100, isLine ? 102 : 200) = cv::Scalar(20);
            cv::GaussianBlur(row, soft, {101, 1}, sigma, 1, cv::BORDER_REPLICATE);
            std::vector<float> widths;
            mirvak::findEdgeRises(std::vector<float>(soft.begin<float>(), soft.end<float>()), 20, widths);
            ASSERT_EQ(widths.size(), isLine ? 2U : 1U) << sigma;
            // From 10 to 90 % of a Gaussian's integral; central differences and a line of two pixels widen
            // it.
            EXPECT_NEAR(widths.front(), 2.563 * sigma, 0.25 * 2.563 * sigma) << isLine;
        }
    }
    std::vector<float> widths;
    mirvak::findEdgeRises({10, 20, 30, 20, 10, 20}, 24, widths);
    mirvak::findEdgeRises({}, 24, widths);
    EXPECT_TRUE(widths.empty());
}

} // namespace

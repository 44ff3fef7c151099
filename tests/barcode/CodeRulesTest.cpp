#include "CodeRules.h"
#include "BarsGoOn.h"
#include "FullAscii39.h"
#include "PayloadText.h"
#include "ReadingOrder.h"
#include "Sightings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

using mirvak::Code;
using mirvak::payloadText;
using mirvak::Sighting;
using mirvak::Sightings;
using mirvak::Symbology;
using testing::ElementsAre;

namespace {

TEST(PayloadText, GuessesTheCharacterSet)
{
    EXPECT_EQ(payloadText("plain", false), "plain");
    EXPECT_EQ(payloadText("造纸坊", false), "造纸坊") << "UTF-8";
    EXPECT_EQ(payloadText("Gr\xF6\xDF"
                          "e",
                          false),
              "Größe")
        << "Latin-1, though the two letters are a Chinese character too";
    EXPECT_EQ(payloadText("\xCA\xE9\xBC\xDC", false), "书架") << "GB 2312";
    EXPECT_EQ(payloadText("\x93\xFA\x96\x7B", false), "日本") << "Shift-JIS";
    EXPECT_EQ(payloadText("A4\xD6\xBD USB\xCF\xDF", false), "A4纸 USB线") << "GB 2312 among letters";
    EXPECT_EQ(payloadText("\xFC"
                          "ber GR\xD6\xDF"
                          "E, 20 \xB0"
                          "C",
                          false),
              "über GRÖßE, 20 °C");
    EXPECT_EQ(payloadText("Cr\xE8me br\xFBl\xE9"
                          "e",
                          false),
              "Crème brûlée");
    EXPECT_EQ(payloadText("T\xE9l\xE9phone", false), "Téléphone") << "though each pair is a rare sign";
    EXPECT_EQ(payloadText("\x83\x65\x83\x58\x83\x67\x82\xC5\x82\xB7", false), "テストです") << "Shift-JIS";
    EXPECT_EQ(payloadText("\xD6\xD0\xCE\xC4\xA3\xBA\xC4\xE3\xBA\xC3", false), "中文：你好");
    EXPECT_EQ(payloadText("\xE8\x91\x97\xE8", false).find('\xEF'), std::string::npos) << "always something";
    EXPECT_EQ(payloadText("\x81\x30\x81\x30", false), "\u0080") << "GB 18030 of four bytes";
    EXPECT_EQ(payloadText("\xFF\xFE", false), "ÿþ") << "nothing else";
    EXPECT_EQ(payloadText("A\x98\x73", false), "A\u0098s") << "likeliest a set without such a character";
}

TEST(PayloadText, IsAlwaysValidUtf8WithoutNul)
{
    using namespace std::string_literals;
    EXPECT_EQ(payloadText("a\0b\0"s, true), "a\u2400b\u2400");
    EXPECT_EQ(payloadText("a\x1D"
                          "b\n",
                          false),
              "a\x1D"
              "b\n")
        << "separators stay";
    EXPECT_EQ(payloadText("ok\xC3", true), "ok\uFFFD") << "cut in a character";
    EXPECT_EQ(payloadText("\xED\xA0\x80", true), "\uFFFD\uFFFD\uFFFD") << "half of a pair of UTF-16";
    EXPECT_EQ(payloadText("\xC0\xAF", true), "\uFFFD\uFFFD") << "longer than needed";
    for (const char* four : {"\xF0\x80\x80\xAF", "\xF4\x90\x80\x80", "\xE4\xB8\xC1\x80"}) // ..., beyond, cut
        EXPECT_EQ(payloadText(four, true), "\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(FullAscii39, IsReadWhereItSurelyIsOne)
{
    EXPECT_EQ(mirvak::fullAscii39("W+I+D+E/A 10%V+X%K$I%F%P/O/Z"), "Wide! 10@x[\t;{/:");
    EXPECT_EQ(mirvak::fullAscii39("A+B/C"), "A+B/C") << "one pair may be anything";
    EXPECT_EQ(mirvak::fullAscii39("+A+B+"), "+A+B+") << "a sign without a letter";
    EXPECT_EQ(mirvak::fullAscii39("+A+B/M"), "+A+B/M") << "a pair that means nothing";
    EXPECT_EQ(mirvak::fullAscii39("PART-39"), "PART-39");
}

TEST(CodeRules, CheckDigitsAndLengths)
{
    EXPECT_TRUE(mirvak::isPlausible(Symbology::ean13, "4006381333931"));
    EXPECT_FALSE(mirvak::isPlausible(Symbology::ean13, "4006381333932"));
    EXPECT_FALSE(mirvak::isPlausible(Symbology::ean13, "400638133393"));
    EXPECT_TRUE(mirvak::isPlausible(Symbology::ean8, "96385074"));
    EXPECT_FALSE(mirvak::isPlausible(Symbology::ean8, "96385O74"));
    EXPECT_FALSE(mirvak::isPlausible(Symbology::upce, "0123456"));
    EXPECT_FALSE(mirvak::isPlausible(Symbology::itf, "1234"));
    EXPECT_FALSE(mirvak::isPlausible(Symbology::codabar, "A12B"));
    EXPECT_FALSE(mirvak::isPlausible(Symbology::qr, ""));
}

Sighting seen(Symbology symbology, const char* bytes, int pass, const cv::Rect2f& box, int lines = 20)
{
    Sighting sighting;
    sighting.symbology = symbology;
    sighting.bytes = bytes;
    sighting.lines = lines;
    sighting.pass = pass;
    sighting.box = box;
    sighting.ofPart = true;
    return sighting;
}

std::vector<std::string> credible(const std::vector<Sighting>& all)
{
    Sightings sightings;
    for (const Sighting& sighting : all)
        sightings.add(sighting);
    std::vector<std::string> texts;
    for (const mirvak::SeenCode& code : sightings.credible())
        texts.push_back(code.best.bytes);
    return texts;
}

const cv::Rect2f here(100, 100, 200, 80);
const cv::Rect2f there(600, 500, 200, 80);

TEST(Sightings, BarsNeedTwoViewsAndMatricesOne)
{
    EXPECT_THAT(credible({seen(Symbology::code39, "SHELF", 1, here)}), ElementsAre());
    EXPECT_THAT(
        credible({seen(Symbology::code39, "SHELF", 1, here), seen(Symbology::code39, "SHELF", 1, here)}),
        ElementsAre())
        << "twice in one view is one view";
    EXPECT_THAT(
        credible({seen(Symbology::code39, "SHELF", 1, here), seen(Symbology::code39, "SHELF", 2, here)}),
        ElementsAre("SHELF"));
    EXPECT_THAT(
        credible({seen(Symbology::code39, "SHELF", 1, here), seen(Symbology::code39, "SHELF", 2, there)}),
        ElementsAre())
        << "two places are two codes";
    for (const int first : {2, 20})
        EXPECT_THAT(credible({seen(Symbology::code39, "SHELF", 1, here, first),
                              seen(Symbology::code39, "SHELF", 2, here, 22 - first)}),
                    ElementsAre("SHELF"))
            << "the view that shows more lines counts";
    EXPECT_THAT(credible({seen(Symbology::code39, "SHELF", 1, here, 2),
                          seen(Symbology::code39, "SHELF", 3, there, 20),
                          seen(Symbology::code39, "SHELF", 5, here | there, 2)}),
                ElementsAre("SHELF"))
        << "the two are one, and its lines those of the better view";
    EXPECT_THAT(credible({seen(Symbology::aztec, "RAIL", 1, here, 0)}), ElementsAre("RAIL"));
}

TEST(Sightings, OfTwoTextsAtOnePlaceTheBetterFoundedStays)
{
    std::vector<Sighting> all;
    for (int pass = 0; pass < 2; ++pass)
        all.push_back(seen(Symbology::code128, "LIE", pass, here));
    for (int pass = 0; pass < 3; ++pass)
        all.push_back(seen(Symbology::code128, "TRUTH", pass, here));
    EXPECT_THAT(credible(all), ElementsAre("TRUTH"));
    for (int pass = 0; pass < 2; ++pass)
        all.push_back(seen(Symbology::code128, "PIECE", pass, {200, 100, 200, 80})); // half beside it
    EXPECT_THAT(credible(all), ElementsAre("TRUTH"));
    all.push_back(seen(Symbology::pdf417, "RIGHT", 1, here, 0));
    EXPECT_THAT(credible(all), ElementsAre("RIGHT"));
    all.clear();
    for (const char* text : {"HALF", "HALF MILL"})
        for (const int pass : {1, 2})
            all.push_back(seen(Symbology::code128, text, pass, here));
    EXPECT_THAT(credible(all), ElementsAre("HALF MILL")) << "of equals the longer one";
}

// Readings with even and odd passes are made by different decoders.
TEST(Sightings, TradeNumbersNeedBothDecodersOrManyViews)
{
    const auto readings = [](std::initializer_list<int> passes) {
        std::vector<Sighting> all;
        for (const int pass : passes)
            all.push_back(seen(Symbology::ean13, "4006381333931", pass, here));
        return credible(all).size();
    };
    EXPECT_EQ(readings({1, 3}), 0U);
    EXPECT_EQ(readings({2, 4, 6, 8}), 0U);
    EXPECT_EQ(readings({1, 4}), 1U);
    EXPECT_EQ(readings({1, 3, 5, 7, 9}), 1U);
}

// One decoder repeats its error in view after view of a blurred picture.
TEST(Sightings, WhatOneDecoderReadsInTwoWaysIsNotBelieved)
{
    const auto readings = [](const char* text, std::initializer_list<int> passes, const cv::Rect2f& box) {
        std::vector<Sighting> all;
        for (const int pass : passes)
            all.push_back(seen(Symbology::ean8, text, pass, box));
        return all;
    };
    const auto both = [](std::vector<Sighting> all, const std::vector<Sighting>& others) {
        all.insert(all.end(), others.begin(), others.end());
        return credible(all);
    };
    const std::vector<Sighting> wrong = readings("40170725", {1, 3, 5, 7, 9, 11}, here);
    EXPECT_THAT(both(wrong, readings("96385074", {1, 4, 5}, here)), ElementsAre("96385074"));
    EXPECT_THAT(both(wrong, readings("96385074", {1, 3}, here)), ElementsAre());
    EXPECT_THAT(both(wrong, readings("96385074", {1}, here)), ElementsAre("40170725")) << "hardly a rival";
    EXPECT_THAT(both(wrong, readings("96385074", {1, 3}, there)), ElementsAre("40170725"));
    std::vector<Sighting> others{seen(Symbology::code39, "MILL", 1, here),
                                 seen(Symbology::code39, "MILL", 4, here)};
    EXPECT_THAT(both(others, wrong), ElementsAre("MILL")) << "another kind of code, by both";
}

// A blurred EAN-13, of which one decoder reads each half as a number of its own.
TEST(Sightings, TheHalvesOfALongNumberAreNotTold)
{
    const auto halves = [](const std::vector<int>& homes, bool isWholeSeen) {
        std::vector<Sighting> all;
        for (const int pass : {1, 3, 5, 7, 9, 11}) {
            all.push_back(seen(Symbology::upce, "04266103", pass, {100, 100, 95, 80}));
            all.push_back(seen(Symbology::upce, "08116789", pass, {205, 100, 95, 80}));
        }
        if (isWholeSeen)
            all.push_back(seen(Symbology::ean13, "4326650856528", 14, {100, 120, 200, 20}, 2));
        for (Sighting& sighting : all)
            sighting.homes = homes;
        return credible(all).size();
    };
    EXPECT_EQ(halves({}, true), 0U) << "the other decoder saw the whole";
    EXPECT_EQ(halves({3}, false), 0U) << "in one place that looks like a code";
    EXPECT_EQ(halves({}, false), 2U) << "two labels";
}

TEST(Sightings, FewLinesNeedMoreViewsAndOfCodesThatDoNotTestThemselvesBothDecoders)
{
    const auto readings = [](Symbology symbology, int lines, std::initializer_list<int> passes) {
        std::vector<Sighting> all;
        for (const int pass : passes)
            all.push_back(seen(symbology, "213231", pass, here, lines));
        return credible(all).size();
    };
    EXPECT_EQ(readings(Symbology::itf, 2, {19, 21, 23}), 0U);
    EXPECT_EQ(readings(Symbology::itf, 2, {19, 20, 23}), 1U);
    EXPECT_EQ(readings(Symbology::itf, 2, {19, 20}), 0U);
    EXPECT_EQ(readings(Symbology::itf, 3, {19, 21}), 1U);
    EXPECT_EQ(readings(Symbology::code128, 2, {19, 21, 23}), 1U);
}

TEST(Sightings, AnotherViewsSpotJoinsByItsCandidate)
{
    Sighting whole = seen(Symbology::code128, "ONE", 1, here),
             spot = seen(Symbology::code128, "ONE", 2, {320, 90, 1, 1});
    EXPECT_THAT(credible({whole, spot}), ElementsAre());
    whole.homes = {4, 7};
    spot.homes = {7};
    EXPECT_THAT(credible({whole, spot}), ElementsAre("ONE"));
}

TEST(Sightings, TwoStripsOfTheSameBarsAreOneCodeAndTwoLabelsAreTwo)
{
    const auto strips = [](float gap, std::vector<int> homes) {
        std::vector<Sighting> all;
        for (int pass = 0; pass < 2; ++pass) {
            all.push_back(seen(Symbology::code128, "ONE", pass, {100, 100, 400, 40}));
            all.push_back(seen(Symbology::code128, "ONE", pass, {100, 140 + gap, 400, 40}));
            for (Sighting& sighting : all)
                sighting.homes = homes;
        }
        return credible(all).size();
    };
    EXPECT_EQ(strips(30, {3}), 1U);
    EXPECT_EQ(strips(60, {3}), 2U) << "too far apart";
    EXPECT_EQ(strips(30, {}), 2U) << "not in one place that looks like a code";
}

TEST(BarsGoOn, WithinOneLabelAndNotFromOneToTheNext)
{
    // Bars at a slant that grows over the width, as in perspective.
    const auto barsOf = [](uint64_t seed) {
        cv::RNG random(seed);
        cv::Mat rgb(400, 600, CV_8UC3, cv::Scalar::all(225));
        for (int x = 100; x < 500; x += random.uniform(4, 12)) {
            const int slant = (x - 300) / 10, width = random.uniform(2, 6);
            const std::vector<cv::Point> bar{
                {x - slant, 80}, {x - slant + width, 80}, {x + slant + width, 320}, {x + slant, 320}};
            cv::fillConvexPoly(rgb, bar, cv::Scalar::all(40));
        }
        return rgb;
    };
    const auto goOn = [](cv::Mat rgb, cv::Point2f from, cv::Point2f to, double deviation = 8) {
        cv::GaussianBlur(rgb, rgb, {}, 1.2);
        cv::Mat noise(rgb.size(), CV_16SC3), seen;
        cv::randn(noise, 0, deviation);
        cv::add(rgb, noise, seen, cv::noArray(), CV_8U);
        mirvak::Candidate candidate;
        candidate.box = {{300, 200}, {440, 280}, 0};
        candidate.isBars = true;
        return mirvak::barsGoOn(mirvak::GreyFrame(seen), candidate, from, to);
    };
    EXPECT_TRUE(goOn(barsOf(5), {250, 120}, {330, 280}));
    EXPECT_TRUE(goOn(barsOf(5), {330, 280}, {250, 120}));
    EXPECT_TRUE(goOn(barsOf(5), {250, 120}, {330, 280}, 45)) << "in the grain of a dim room";
    EXPECT_FALSE(goOn(barsOf(5), {120, 200}, {480, 205})) << "one beside the other";
    cv::Mat labels = barsOf(5), touching = barsOf(5), fading = barsOf(5);
    labels.rowRange(185, 215).setTo(cv::Scalar::all(225));
    cv::putText(labels, "40063813339", {180, 210}, cv::FONT_HERSHEY_SIMPLEX, 0.9, {40, 40, 40}, 2);
    EXPECT_FALSE(goOn(labels, {250, 120}, {330, 280})) << "white and a line of print between two labels";
    EXPECT_TRUE(goOn(labels, {300, 230}, {300, 300})) << "both in the lower label";
    barsOf(6).rowRange(200, 400).copyTo(touching.rowRange(200, 400));
    EXPECT_FALSE(goOn(touching, {250, 120}, {330, 280})) << "other bars without white between";
    for (int y = 150; y < 250; ++y) // softly, to a sixth of the contrast
        cv::addWeighted(fading.row(y),
                        1 - 0.83 * (1 - std::abs(y - 200) / 50.0),
                        fading.row(0), // bare
                        0.83 * (1 - std::abs(y - 200) / 50.0),
                        0,
                        fading.row(y));
    EXPECT_FALSE(goOn(fading, {250, 120}, {330, 280}, 1)) << "where they cannot be seen";
}

TEST(Sightings, StripsWhoseBarsGoOnAreOneCode)
{
    const auto labels = [](bool goesOn, const std::vector<int>& homes) {
        Sightings sightings([=](const Sighting&, const Sighting&) { return goesOn; });
        for (const int pass : {1, 2}) {
            for (const float y : {100.F, 300.F}) {
                for (Sighting sighting : {seen(Symbology::code128, "ONE", pass, {100, y, 400, 20}),
                                          seen(Symbology::qr, "TWO", pass, {600, y, 100, 90})}) {
                    sighting.homes = homes;
                    sightings.add(sighting);
                }
            }
        }
        size_t found = 0;
        for (const mirvak::SeenCode& code : sightings.credible())
            found += code.best.symbology == Symbology::code128 ? 1 : 10;
        return found;
    };
    EXPECT_EQ(labels(true, {2}), 21U) << "squares have no bars";
    EXPECT_EQ(labels(true, {}), 22U) << "not in one place that looks like a code";
    EXPECT_EQ(labels(false, {2}), 22U);
}

TEST(Sightings, APieceOfALongerNumberIsDropped)
{
    std::vector<Sighting> all;
    for (int pass = 0; pass < 2; ++pass)
        all.push_back(seen(Symbology::itf, "15400141288763", pass, here));
    for (int pass = 0; pass < 4; ++pass)
        all.push_back(seen(Symbology::itf, "400141", pass, {310, 100, 5, 5}));
    EXPECT_THAT(credible(all), ElementsAre("15400141288763"));
}

TEST(ReadingOrder, RowsFromTheTopThenFromTheLeft)
{
    const auto at = [](const char* text, float x, float y, float height) {
        return Code{text, Symbology::qr, {x, y, 50, height}};
    };
    std::vector<Code> codes{at("4", 10, 300, 100),
                            at("2", 200, 90, 60),
                            at("5", 300, 340, 100),
                            at("1", 20, 100, 100),
                            at("3", 400, 130, 40),
                            at("6", 10, 395, 30)};
    mirvak::sortForReading(codes);
    std::string order;
    for (const Code& code : codes)
        order += code.text;
    EXPECT_EQ(order, "123456");
}

} // namespace

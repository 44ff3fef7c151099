#include "CodeReader.h"

#include "Codec.h"
#include "MadeCodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <opencv2/imgproc.hpp>

#include <zint.h>

#include <fstream>
#include <sstream>

using mirvak::Code;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

namespace {

std::vector<std::string> textsOf(const std::vector<Code>& codes)
{
    std::vector<std::string> texts;
    for (const Code& code : codes)
        texts.push_back(code.text);
    return texts;
}

std::vector<std::string> read(const cv::Mat& rgb)
{
    return textsOf(mirvak::CodeReader(LUMRO_CODE_HELPER).read(rgb));
}

struct Kind
{
    const char* name;
    int symbology;
    const char* encoded;
    const char* text;
};

// The check digits are those of the standards' own examples, or worked out by hand.
const Kind kinds[] = {
    {"EAN13", BARCODE_EANX, "400638133393", "4006381333931"},
    {"EAN8", BARCODE_EANX, "9638507", "96385074"},
    {"UPCA", BARCODE_UPCA, "03600029145", "036000291452"},
    {"UPCE", BARCODE_UPCE, "0123456", "01234565"},
    {"Code39", BARCODE_CODE39, "SHELF-42", "SHELF-42"},
    {"Code93", BARCODE_CODE93, "BOX 1187", "BOX 1187"},
    {"Code128", BARCODE_CODE128, "Lot 2024/b", "Lot 2024/b"},
    {"ITF", BARCODE_C25INTER, "00714598", "00714598"},
    {"ITF14", BARCODE_ITF14, "1540014128876", "15400141288763"},
    {"Codabar", BARCODE_CODABAR, "A40156B", "A40156B"},
    {"DataBar", BARCODE_RSS14, "2001234567890", "0120012345678909"},
    {"DataBarExpanded", BARCODE_RSS_EXP, "[01]98898765432106[3202]012345", "01988987654321063202012345"},
    {"QR", BARCODE_QRCODE, "造纸坊 第42号书架", "造纸坊 第42号书架"},
    {"MicroQR", BARCODE_MICROQR, "COACH 5", "COACH 5"},
    {"DataMatrix", BARCODE_DATAMATRIX, "MILL 7 SHELF 42", "MILL 7 SHELF 42"},
    {"Aztec", BARCODE_AZTEC, "RAIL 0714", "RAIL 0714"},
    {"PDF417", BARCODE_PDF417, "Warehouse 3;Gate B", "Warehouse 3;Gate B"},
};

class EveryKind : public ::testing::TestWithParam<Kind>
{
protected:
    static std::vector<std::string> readAt(double degrees, bool inverted = false)
    {
        CodePage page(1000, 800, inverted ? 0 : 255);
        CodePage::Place place;
        place.centre = {560, 430}; // off the middle
        place.degrees = degrees;
        place.modulePx = 4;
        place.inverted = inverted;
        page.add(GetParam().symbology, GetParam().encoded, place);
        return read(page.rgb());
    }
};

TEST_P(EveryKind, IsReadWhicheverWayItLies)
{
    for (const double degrees : {0.0, 33.0, 118.0, 180.0, 247.0})
        EXPECT_THAT(readAt(degrees), ElementsAre(GetParam().text)) << degrees << " degrees";
    EXPECT_THAT(readAt(17, true), ElementsAre(GetParam().text)) << "light on dark";
}

INSTANTIATE_TEST_SUITE_P(Codes, EveryKind, testing::ValuesIn(kinds), [](const auto& test) {
    return std::string(test.param.name);
});

CodePage::Place at(double x, double y, double degrees = 0)
{
    CodePage::Place place;
    place.centre = {x, y};
    place.degrees = degrees;
    return place;
}

TEST(CodeReader, OfLargeFramesSmallBarsAndOnesThatFillThem)
{
    CodePage page(2600, 1800);
    page.add(BARCODE_QRCODE, "fills the frame", {{1000, 900}, 8, 40});
    page.add(BARCODE_CODE128, "Lot 2024/b", {{2250, 300}, 9, 1.6});
    page.add(BARCODE_C25INTER, "95818969", {{2250, 1300}, 171, 1.8});
    page.blur(0.5);
    page.addNoise(2, 3);
    EXPECT_THAT(read(page.rgb()), UnorderedElementsAreArray({"fills the frame", "Lot 2024/b", "95818969"}));
}

TEST(CodeReader, ReadsSmallCodesAnywhereOnALargeFrame)
{
    CodePage page(3264, 2448);
    std::vector<std::string> texts;
    const std::pair<int, cv::Point> places[] = {{BARCODE_DATAMATRIX, {120, 100}},
                                                {BARCODE_QRCODE, {3150, 130}},
                                                {BARCODE_AZTEC, {3120, 2350}},
                                                {BARCODE_DATAMATRIX, {1500, 1900}},
                                                {BARCODE_CODE128, {800, 2300}},
                                                {BARCODE_PDF417, {2200, 1000}}};
    for (const auto& [symbology, centre] : places) {
        CodePage::Place place = at(centre.x, centre.y, 30.0 * double(texts.size()));
        place.modulePx = 2.5;
        texts.push_back("No. " + std::to_string(texts.size()));
        page.add(symbology, texts.back(), place);
    }
    EXPECT_THAT(read(page.rgb()), UnorderedElementsAreArray(texts));
}

TEST(CodeReader, TwoLabelsWithTheSameTextAreTwoCodes)
{
    CodePage page(1200, 900);
    page.add(BARCODE_CODE128, "SAME", at(300, 200));
    page.add(BARCODE_CODE128, "SAME", at(850, 650));
    page.add(BARCODE_QRCODE, "SAME", at(300, 650));
    EXPECT_THAT(read(page.rgb()), ElementsAre("SAME", "SAME", "SAME"));
}

TEST(CodeReader, TextOfOtherCharacterSetsBecomesUtf8AndNulDoesNotCutIt)
{
    CodePage page(1800, 500);
    const auto lay = [&](const cv::Mat& code, int x) {
        const cv::Mat grey = page.grey();
        code.copyTo(grey(cv::Rect(x, 150, code.cols, code.rows)));
    };
    lay(drawCode(BARCODE_DATAMATRIX, std::string("a\0b", 3), 6, DATA_MODE), 100);
    lay(drawCode(BARCODE_DATAMATRIX, "caf\xE9 noir", 6, DATA_MODE), 500);
    lay(drawCode(BARCODE_DATAMATRIX, "\xD6\xD0\xB9\xFA", 6, DATA_MODE), 900);
    lay(drawCode(BARCODE_DATAMATRIX, "Привет", 6), 1300); // names its character set, ISO 8859-5
    EXPECT_THAT(read(page.rgb()), ElementsAre("a\u2400b", "café noir", "中国", "Привет"));
}

TEST(CodeReader, EmptyTinyAndNoisyPicturesHoldNone)
{
    for (const cv::Size size : {cv::Size(0, 0), cv::Size(1, 1), cv::Size(9, 700), cv::Size(640, 480)})
        EXPECT_THAT(read(cv::Mat(size, CV_8UC3, cv::Scalar::all(255))), IsEmpty()) << size;
    cv::Mat noise(600, 800, CV_8UC3);
    cv::RNG random(7);
    random.fill(noise, cv::RNG::UNIFORM, 0, 256);
    EXPECT_THAT(read(noise), IsEmpty());
    cv::Mat stripes(600, 800, CV_8UC3);
    for (int x = 0; x < stripes.cols; ++x)
        stripes.col(x).setTo(x / 4 % 2 ? cv::Scalar::all(255) : cv::Scalar::all(0));
    EXPECT_THAT(read(stripes), IsEmpty());
}

// The page of codes of the virtual desk and what lies on it.
std::vector<std::string> deskTexts()
{
    std::ifstream file(LUMRO_DESK_DIR "/codes.csv");
    std::vector<std::string> texts;
    std::string line;
    std::getline(file, line); // the heads of the columns
    while (std::getline(file, line)) {
        size_t at = 0;
        for (int column = 0; column < 5; ++column)
            at = line.find(',', at) + 1;
        texts.push_back(line.substr(at));
    }
    return texts;
}

TEST(CodeReader, ReadsTheDesksPageOfCodesInOrder)
{
    const std::vector<std::string> texts = deskTexts();
    ASSERT_EQ(texts.size(), 8U);
    const auto page = mirvak::readImage(LUMRO_DESK_DIR "/pictures/1600x1200/11-codes.jpg");
    ASSERT_TRUE(page);
    EXPECT_EQ(read(page->pixels), texts);
}

TEST(CodeReader, FindsNoCodesInTheDesksPagesOfText)
{
    for (const char* name :
         {"01-letter", "03-english-text", "04-chinese-text", "08-receipt", "09-card-front"}) {
        const auto page =
            mirvak::readImage(std::string(LUMRO_DESK_DIR "/pictures/1600x1200/") + name + ".jpg");
        ASSERT_TRUE(page) << name;
        EXPECT_THAT(read(page->pixels), IsEmpty()) << name;
    }
}

} // namespace

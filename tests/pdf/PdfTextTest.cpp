// Text over the pictures of a PDF, and files for archives, judged by other programs.
#include "InvisibleFont.h"
#include "OddPictures.h"
#include "PdfTools.h"
#include "PictureBytes.h"
#include "Pixels.h"
#include "TempDir.h"
#include "mirvakcamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include <ft2build.h>
#include FT_FREETYPE_H

using testing::HasSubstr;
using testing::Not;

namespace {

using Corners = std::array<MirvakPointF, 4>;

Corners upright(float left, float top, float right, float bottom)
{
    return {{{left, top}, {right, top}, {right, bottom}, {left, bottom}}};
}

MirvakPdfWord word(const char* text, const Corners& corners, int line = 0, bool isSpaceBehind = true)
{
    MirvakPdfWord made{text, {}, line, isSpaceBehind};
    std::copy(corners.begin(), corners.end(), made.corners);
    return made;
}

class PdfText : public ::testing::Test
{
protected:
    /// A page of 400 x 300 points, one pixel a point.
    std::string picture(int orientation = 1) const
    {
        const cv::Mat paper(300, 400, CV_8UC3, cv::Scalar(240, 230, 210));
        odd::JpegKind kind;
        return dir.write("page.jpg", withOrientation(odd::jpeg(paper, kind), orientation));
    }
    void
    make(const std::vector<MirvakPdfWord>& words, const MirvakPdfOptions& options = {}, int orientation = 1)
    {
        std::filesystem::remove(pdf);
        ASSERT_EQ(camera.MirvakPDF_AddPage(picture(orientation).c_str()), MIRVAK_OK);
        ASSERT_EQ(camera.MirvakPDF_SetWords(words), MIRVAK_OK);
        ASSERT_EQ(camera.MirvakPDF_SaveAs(pdf.c_str(), options, nullptr, nullptr), MIRVAK_OK);
        EXPECT_EQ(tools::complaints(pdf), "");
    }
    /// All objects of the file in plain text.
    std::string plain() const
    {
        return tools::run("qpdf --qdf --object-streams=disable '" + pdf + "' - | cat -v");
    }
    void expectBox(const tools::SeenWord& seen, const cv::Rect2d& wanted) const
    {
        EXPECT_NEAR(seen.box.x, wanted.x, 0.5) << seen.text;
        EXPECT_NEAR(seen.box.y, wanted.y, 0.5) << seen.text;
        EXPECT_NEAR(seen.box.br().x, wanted.br().x, 0.5) << seen.text;
        EXPECT_NEAR(seen.box.br().y, wanted.br().y, 0.5) << seen.text;
    }

    const TempDir dir;
    const std::string pdf = dir.file("文.pdf");
    MirvakCamera camera;
};

} // namespace

TEST_F(PdfText, WordsLieWhereTheyWereReadAndNothingOfThemIsSeen)
{
    make({});
    const cv::Mat bare = tools::rendered(pdf);
    make({word("Harbour", upright(40, 50, 120, 70)),
          word("office", upright(130, 50, 180, 70)),
          word("il", upright(40, 90, 52, 104), 1)});
    EXPECT_EQ(difference(tools::rendered(pdf), bare), 0);
    const std::vector<tools::SeenWord> seen = tools::wordsOf(pdf);
    ASSERT_EQ(seen.size(), 3U);
    expectBox(seen[0], {40, 50, 80, 20});
    expectBox(seen[1], {130, 50, 50, 20});
    expectBox(seen[2], {40, 90, 12, 14});
    EXPECT_EQ(seen[0].text, "Harbour");
    make({word("Har", upright(40, 50, 90, 70), 0, false), // boxes of one word that overlap
          word("bour", upright(50, 50, 120, 70))});
    expectBox(tools::wordsOf(pdf).at(0), {40, 50, 50, 20});
    MirvakPdfOptions lying;
    lying.sheet = MIRVAK_PDF_LYING_A4;
    make({word("Harbour", upright(40, 60, 120, 90))}, lying);
    EXPECT_THAT(tools::pageSizes(pdf), testing::ElementsAre("842 x 595"));
    const double scale = 535.0 / 300; // as high as the room between the margins
    expectBox(tools::wordsOf(pdf).at(0), {30 + 40 * scale, 30 + 60 * scale, 80 * scale, 30 * scale});
    const cv::Mat page = tools::rendered(pdf);
    EXPECT_LT(page.at<cv::Vec3b>(33, 33)[2], 220) << "the picture begins at the margin";
    EXPECT_LT(page.at<cv::Vec3b>(562, 740)[2], 220);
    EXPECT_EQ(page.at<cv::Vec3b>(27, 300)[2], 255);
    EXPECT_EQ(page.at<cv::Vec3b>(300, 746)[2], 255);
}

TEST_F(PdfText, EveryScriptIsCopiedAsItWasRead)
{
    make({word("naïve", upright(10, 10, 60, 25)),
          word("<a&b>", upright(66, 10, 110, 25)),
          word("мост,", upright(120, 10, 170, 25)),
          word("完。", upright(10, 50, 50, 70), 1, false), // gaps between ideographs are no spaces
          word("我们", upright(62, 50, 102, 70), 1, false),
          word("𠮷", upright(108, 50, 128, 70), 1, false),
          word("Zug-", upright(10, 90, 60, 105), 2)});
    EXPECT_EQ(tools::textOf(pdf, "-raw"), "naïve <a&b> мост,\n完。我们𠮷\nZug-\n\f");
    EXPECT_EQ(tools::run("pdffonts '" + pdf + "' | tail -1 | awk '{print $4, $5, $6, $7}'"),
              "Identity-H yes no yes\n")
        << "embedded, with Unicode values";
    std::string many; // in sections of 100
    for (int i = 0; i < 130; ++i)
        many += {'\xe4', static_cast<char>(0xb8 + i / 64), static_cast<char>(0x80 + i % 64)};
    make({word(many.c_str(), upright(10, 10, 390, 30), 0, false)});
    EXPECT_EQ(tools::textOf(pdf, "-raw"), many + "\n\f");
    EXPECT_THAT(plain(), testing::AllOf(HasSubstr("\n100 beginbfchar\n"), HasSubstr("\n30 beginbfchar\n")));
}

TEST_F(PdfText, ColumnsAndSlantingLinesStayInOrder)
{
    std::vector<MirvakPdfWord> words;
    std::string wanted;
    const char* const texts[] = {"The", "ledgers", "still", "stand", "on", "shelf"};
    for (int line = 0; line < 8; ++line) { // two columns of four
        const float left = line < 4 ? 10 : 210, top = 40 + 30.F * static_cast<float>(line % 4);
        for (int i = 0; i < 6; ++i) {
            const float x = left + 30.F * static_cast<float>(i), y = top + 1.8F * static_cast<float>(i);
            words.push_back(
                word(texts[i], {{{x, y}, {x + 25, y + 1.5F}, {x + 25, y + 11.5F}, {x, y + 10}}}, line));
            wanted += std::string(texts[i]) + (i < 5 ? " " : "\n");
        }
    }
    make(words);
    std::string text = tools::linesOf(pdf);
    text.erase(std::remove(text.begin(), text.end(), '\f'), text.end());
    EXPECT_EQ(text, wanted);
    for (const tools::SeenWord& seen : tools::wordsOf(pdf)) {
        const auto i = static_cast<double>(static_cast<int>(seen.box.x) % 200 / 30);
        const double middle = std::fmod(seen.box.y + seen.box.height / 2 - 40, 30);
        EXPECT_NEAR(middle, 5.75 + 1.8 * i, 4.5) << "moved by less than half a line's height: " << seen.text;
        EXPECT_NEAR(seen.box.height, 10, 0.5);
    }
}

TEST_F(PdfText, NoWordLeavesItsPrintForALineThatIsFarFromLevel)
{
    std::vector<MirvakPdfWord> words;
    for (int i = 0; i < 9; ++i) { // at five degrees: from end to end three times as high as its letters
        const float x = 20 + 40.F * static_cast<float>(i), y = 100 + 3.5F * static_cast<float>(i);
        words.push_back(word("ledger", {{{x, y}, {x + 34, y + 3}, {x + 34, y + 13}, {x, y + 10}}}));
    }
    make(words);
    const std::vector<tools::SeenWord> seen = tools::wordsOf(pdf);
    ASSERT_EQ(seen.size(), words.size());
    for (const tools::SeenWord& one : seen) {
        const double i = std::floor(one.box.x / 40);
        EXPECT_NEAR(one.box.y + one.box.height / 2, 106.5 + 3.5 * i, 1) << i;
    }
}

TEST_F(PdfText, WordsOfSteepLinesStayWholeWhereTheyLie)
{
    // At nine degrees; the last one is so long that its ends would leave its print.
    const double slant = 9 * CV_PI / 180;
    const auto at = [&](double x, double y) {
        return MirvakPointF{static_cast<float>(30 + x * std::cos(slant) - y * std::sin(slant)),
                            static_cast<float>(100 + x * std::sin(slant) + y * std::cos(slant))};
    };
    std::vector<MirvakPdfWord> words;
    const std::pair<const char*, double> texts[] = {
        {"ledgers", 36}, {"of", 10}, {"ferrymen", 40}, {"incomprehensibly", 120}};
    double x = 0;
    for (const auto& [text, length] : texts) {
        words.push_back(word(text, {{at(x, 0), at(x + length, 0), at(x + length, 11), at(x, 11)}}));
        x += length + 5;
    }
    make(words);
    const std::vector<tools::SeenWord> seen = tools::wordsOf(pdf);
    ASSERT_GE(seen.size(), 4U);
    x = 0;
    for (size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(seen[i].text, texts[i].first);
        const MirvakPointF middle = at(x + texts[i].second / 2, 5.5);
        EXPECT_NEAR(seen[i].box.x + seen[i].box.width / 2, middle.x, 0.5);
        EXPECT_NEAR(seen[i].box.y + seen[i].box.height / 2, middle.y, 0.5);
        EXPECT_NEAR(seen[i].box.height, 11, 0.5);
        x += texts[i].second + 5;
    }
    EXPECT_NE(seen[3].text, texts[3].first) << "turned as it lies, which readers take apart";
}

TEST_F(PdfText, TurnedPicturesAndTurnedPagesKeepTheirWords)
{
    for (const int orientation : {1, 3, 6, 8}) {
        const bool isHigh = orientation >= 5;
        make({word("first", upright(20, 30, 80, 50)), word("second", upright(90, 30, 160, 50))},
             {},
             orientation);
        EXPECT_THAT(tools::pageSizes(pdf), testing::ElementsAre(isHigh ? "300 x 400" : "400 x 300"));
        EXPECT_EQ(tools::textOf(pdf), "first second\n\n\f") << orientation;
        expectBox(tools::wordsOf(pdf).at(1), {90, 30, 70, 20});
    }
    // A page on its side: the lines run upward, its top is at the left.
    make({word("upward", {{{30, 200}, {30, 100}, {50, 100}, {50, 200}}}),
          word("line", {{{30, 90}, {30, 40}, {50, 40}, {50, 90}}})});
    EXPECT_EQ(tools::textOf(pdf), "upward line\n\n\f");
    expectBox(tools::wordsOf(pdf).at(0), {30, 100, 20, 100});
}

TEST_F(PdfText, WordsThatMakeNoSenseAreLeftOutAndTheOthersStay)
{
    const float none = std::numeric_limits<float>::quiet_NaN(), far = std::numeric_limits<float>::infinity();
    EXPECT_EQ(camera.MirvakPDF_SetWords({word("x", {})}), MIRVAK_BAD_ARGUMENT) << "no page";
    make({word("point", {}),
          word("none", upright(none, 0, 10, 10)),
          word("far", upright(0, 0, far, 10)),
          word("huge", upright(-1e30F, 0, 1e30F, 10)),
          word("flat", upright(10, 50, 60, 50)),
          word("thin", upright(10, 50, 10, 70)),
          word("", upright(1, 1, 20, 10)),
          word("\xff\xfe", upright(1, 1, 20, 10)),
          word("\x01\x1b", upright(1, 1, 20, 10)),
          word("a\x01\xc3z", upright(20, 100, 60, 115), 1),
          word("b\xEF\xBB\xBF\xC2\x85\xEF\xBF\xBEy", upright(20, 140, 60, 155), 2), // signs that are none
          word("good", upright(70, 100, 110, 115), 1)});
    const std::string text = tools::textOf(pdf);
    EXPECT_THAT(text, HasSubstr("good"));
    EXPECT_THAT(text, HasSubstr("by"));
    EXPECT_THAT(text, HasSubstr("a"));
    for (const char* missing : {"point", "none", "far", "huge", "flat", "thin"})
        EXPECT_THAT(text, Not(HasSubstr(missing)));
    EXPECT_THAT(plain(), testing::AllOf(Not(HasSubstr("nan")), Not(HasSubstr("inf"))));
    make({word("point", {})});
    EXPECT_EQ(tools::textOf(pdf), "\f");
}

TEST_F(PdfText, WithoutChoicesTheFileIsAsItAlwaysWas)
{
    make({});
    const std::string objects = plain();
    for (const char* added : {"/Font", "/Metadata", "/OutputIntents", "/Title", "/ModDate", "BT", "q "})
        EXPECT_THAT(objects, Not(HasSubstr(added)));
    EXPECT_THAT(objects, HasSubstr("\n400 0 0 300 0 0 cm /Picture Do\n"));
    EXPECT_EQ(tools::run("qpdf --show-xref '" + pdf + "' | wc -l"), "8\n") << "no object more";
    // Words belong to their page alone, and only to one file.
    const std::string path = picture();
    ASSERT_EQ(camera.MirvakPDF_AddPage(path.c_str()), MIRVAK_OK);
    ASSERT_EQ(camera.MirvakPDF_AddPage(path.c_str()), MIRVAK_OK);
    ASSERT_EQ(camera.MirvakPDF_SetWords({word("second", upright(20, 30, 80, 50))}), MIRVAK_OK);
    ASSERT_EQ(camera.MirvakPDF_Save(dir.file("two.pdf").c_str()), MIRVAK_OK);
    EXPECT_EQ(tools::textOf(dir.file("two.pdf")), "\fsecond\n\n\f");
}

TEST(InvisibleFont, IsReadAndHasTheWidthsThatThePdfTells)
{
    const mirvak::Bytes file = mirvak::invisibleFont::file();
    FT_Library library = nullptr;
    ASSERT_EQ(FT_Init_FreeType(&library), 0);
    FT_Face face = nullptr;
    ASSERT_EQ(FT_New_Memory_Face(library, file.data(), static_cast<FT_Long>(file.size()), 0, &face), 0);
    EXPECT_EQ(face->num_glyphs, mirvak::invisibleFont::glyphs);
    EXPECT_EQ(face->units_per_EM, 1000);
    EXPECT_EQ(face->ascender, 780);
    EXPECT_EQ(face->descender, -220);
    for (unsigned i = 0; i < mirvak::invisibleFont::glyphs; ++i) {
        ASSERT_EQ(FT_Load_Glyph(face, i, FT_LOAD_NO_SCALE), 0) << i;
        EXPECT_EQ(face->glyph->metrics.horiAdvance, mirvak::invisibleFont::widths[i]);
        EXPECT_EQ(face->glyph->outline.n_points, 0);
    }
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    // The sum of a whole font, its adjustment included, is a constant of the format.
    std::uint32_t sum = 0;
    for (size_t i = 0; i + 3 < file.size(); i += 4)
        sum += static_cast<std::uint32_t>(file[i] << 24 | file[i + 1] << 16 | file[i + 2] << 8 | file[i + 3]);
    EXPECT_EQ(sum, 0xb1b0afbaU);
}

// The rules of PDF/A-2b (ISO 19005-2) that such a file can break.
TEST_F(PdfText, AnArchivalFileKeepsTheRules)
{
    MirvakPdfOptions archival;
    archival.isArchival = true;
    archival.title = "Vertrag\x01 <1> & 合同";
    cv::Mat inks(24, 32, CV_8UC4, cv::Scalar(255, 0, 0, 255));
    odd::JpegKind kind{JCS_CMYK, JCS_CMYK};
    kind.jfif = false;
    const std::string cmyk = dir.write("cmyk.jpg", withOrientation(odd::jpeg(inks, kind), 6));
    ASSERT_EQ(camera.MirvakPDF_AddPage(cmyk.c_str()), MIRVAK_OK);
    ASSERT_NO_FATAL_FAILURE(make({word("archive 档", upright(20, 30, 80, 50))}, archival));

    const std::string objects = plain();
    for (const char* forbidden :
         {"/Encrypt", "/SMask", "/CMYK", "/DeviceCMYK", "/CIDSet", "/JavaScript", "/LZWDecode"})
        EXPECT_THAT(objects, Not(HasSubstr(forbidden)));
    for (const char* needed : {"/S /GTS_PDFA1",
                               "/OutputConditionIdentifier (sRGB IEC61966-2.1)",
                               "/N 3",
                               "/ID [",
                               "/FontFile2",
                               "/CIDToGIDMap",
                               "/ToUnicode"})
        EXPECT_THAT(objects, HasSubstr(needed));
    const std::string packet = tools::run("pdfinfo -meta '" + pdf + "'");
    EXPECT_THAT(packet, HasSubstr("<pdfaid:part>2</pdfaid:part>"));
    EXPECT_THAT(packet, HasSubstr("<pdfaid:conformance>B</pdfaid:conformance>"));
    EXPECT_THAT(packet, HasSubstr(">Vertrag &lt;1&gt; &amp; 合同<"));
    EXPECT_THAT(packet, HasSubstr("<pdf:Producer>Lumro scanner</pdf:Producer>"));
    // The same in the information dictionary, to the second.
    const std::string about = tools::run("TZ=UTC pdfinfo -isodates '" + pdf + "'");
    EXPECT_THAT(about, HasSubstr(" <1> & 合同"));
    const auto after = [](const std::string& text, const std::string& mark) {
        const size_t at = text.find(mark);
        return at == std::string::npos ? mark : text.substr(text.find_first_of("2", at + mark.size()), 19);
    };
    EXPECT_EQ(after(packet, "<xmp:CreateDate>"), after(about, "CreationDate:"));
    EXPECT_EQ(after(packet, "<xmp:ModifyDate>"), after(about, "ModDate:"));
    // The profile is one of a display's RGB; the catalogue's metadata can be read by searching the file.
    const std::string profile = tools::run("qpdf --json=latest '" + pdf +
                                           "' | grep -A9 DestOutputProfile | grep -o '[0-9]* 0 R' | head -1");
    const std::string number = profile.substr(0, profile.find(' '));
    EXPECT_THAT(tools::run("qpdf --show-object=" + number + " --filtered-stream-data '" + pdf +
                           "' | head -c 40 | strings"),
                testing::AllOf(HasSubstr("mntrRGB XYZ"), HasSubstr("acsp")));
    EXPECT_THAT(TempDir::contentOf(pdf), HasSubstr("<pdfaid:part>2"));
    for (size_t at = objects.find("Tm <"); at != std::string::npos; at = objects.find("Tm <", at + 1)) {
        for (size_t code = at + 4; objects[code] != '>'; code += 4)
            EXPECT_NE(objects.substr(code, 4), "0000") << "the missing glyph";
    }
    const cv::Vec3b middle = tools::rendered(pdf, 1).at<cv::Vec3b>(4, 4);
    EXPECT_GT(middle[0], middle[1] + 80) << "magenta and yellow are red";
    EXPECT_EQ(tools::textOf(pdf, "-f 2"), "archive 档\n\n\f");
}

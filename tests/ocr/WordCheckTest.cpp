// Which of two readings of the same place is believed.
#include "WordCheck.h"
#include "Models.h"
#include "SecondOpinion.h"
#include "SingleThread.h"
#include "TestPages.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetrics>

#include <set>

using mirvak::ReadWord;

namespace {

ReadWord word(const char* text, float confidence)
{
    ReadWord made;
    made.text = text;
    made.confidence = confidence;
    return made;
}

// Dictionaries look at words without the marks around them.
bool isWord(const std::string& text)
{
    static const std::set<std::string> all{"door",
                                           "where",
                                           "shelf",
                                           "is",
                                           "is.",
                                           "is,",
                                           "ten",
                                           "tea",
                                           "to",
                                           "the",
                                           "They",
                                           "they",
                                           "весной",
                                           "вперёд",
                                           "вперед"};
    return all.count(text) > 0;
}

} // namespace

TEST(WordCheck, AWordByItselfIsBelievedWhereLinesAreMisread)
{
    struct Case
    {
        ReadWord inLine, alone;
        bool isPutRight;
        const char* why;
    };
    const Case cases[] = {
        {word("deor", 85), word("door", 96), true, "no word before"},
        {word("deor", 95), word("door", 96), false, "hardly surer"},
        {word("deor", 60), word("door", 89), false, "not sure"},
        {word("deor", 60), word("d00r", 95), false, "neither is a word"},
        {word("deor", 60), word("doorr", 95), false, "nor this"},
        {word("tea", 45), word("ten", 95), true, "a word that was hardly read"},
        {word("tea", 55), word("ten", 95), false, "a word that was"},
        {word("tea", 45), word("ten", 93), false, "another one needs more"},
        {word("They", 45), word("they", 96), false, "capitals are told by the line"},
        {word("вперёд", 45), word("вперед", 96), false, "dots are lost first"},
        {word("is'", 60), word("is", 97), true, "dust at a word"},
        {word("'is.", 60), word("is.", 97), true, "before one"},
        {word("is'", 81), word("is", 97), false, "marks that were well read"},
        {word("is'", 79), word("is", 93), false, "dust needs more"},
        {word("is", 60), word("is'", 97), false, "no mark comes in addition"},
        {word("is.", 60), word("is,", 97), false, "nor in place of another one"},
        {word(".is", 60), word("is.", 97), false, "nor at the other side"},
        {word("wbere'", 65), word("where", 96), false, "marks and letters at once"},
        {word("wbere'", 55), word("where", 96), true, "of a worn word"},
        {word("shelfish", 70), word("shelf", 96), false, "letters get lost at an edge"},
        {word("51747", 75), word("517.17", 96.5F), true, "a number"},
        {word("51747", 81), word("517.17", 96.5F), false, "that was well read"},
        {word("51747", 75), word("517.17", 95), false, "numbers have no dictionary"},
        {word("--", 30), word("door", 96), false, "no word of a stroke"},
        {word("deor", 30), word("--", 96), false, "no stroke of a word"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(mirvak::isPutRight(each.inLine, each.alone, isWord), each.isPutRight)
            << each.inLine.text << " > " << each.alone.text << ": " << each.why;
}

TEST(WordCheck, AWordThatIsReadAlikeByItselfIsAsSure)
{
    const testPages::Style style;
    QFont font(style.family);
    font.setPixelSize(style.size);
    const auto checked = [&](const QString& printed, const char* wasRead) {
        const QImage picture = testPages::page({500, 250}, {printed}, style, 120, 150)
                                   .convertToFormat(QImage::Format_Grayscale8);
        const cv::Mat grey(picture.height(),
                           picture.width(),
                           CV_8UC1,
                           const_cast<uchar*>(picture.constBits()),
                           static_cast<size_t>(picture.bytesPerLine()));
        const QRect ink = QFontMetrics(font).tightBoundingRect(printed).translated(120, 150);
        ReadWord weak = word(wasRead, 20);
        weak.box = {ink.left(), ink.top(), ink.right() + 1, ink.bottom() + 1};
        mirvak::ReadPage page;
        page.blocks = {{{{weak}, weak.box}}};
        const mirvak::SingleThread single;
        mirvak::Models models(OCR_MODELS);
        mirvak::checkWords(
            page, grey, *models.get("eng"), {mirvak::Limit::Clock::now() + std::chrono::minutes(5)});
        return page.blocks.front().front().words.front();
    };
    EXPECT_GE(checked(QStringLiteral("ledgers"), "ledgers").confidence, 90);
    EXPECT_EQ(checked(QStringLiteral("Kryxlov"), "Kryxlov").confidence, 20) << "no dictionary has it";
    EXPECT_EQ(checked(QStringLiteral("is"), "is").confidence, 20) << "as short as dust";
    EXPECT_EQ(checked(QStringLiteral("ledgers"), "ledqers").text, "ledgers");
}

TEST(SecondOpinion, WornWordsStayInTheirLanguage)
{
    const auto never = [](const std::string&) { return false; };
    const std::vector<ReadWord> worn{word("to", 50), word("the", 40)}, strange{word("ю", 95), word("Ше", 93)};
    const std::vector<ReadWord> russian{word("весной", 95)}, garbage{word("BecHoH", 40), word("a", 30)};
    EXPECT_TRUE(mirvak::losesWords(worn, isWord, strange, never));
    EXPECT_FALSE(mirvak::losesWords(garbage, isWord, russian, isWord));
    EXPECT_FALSE(mirvak::losesWords(garbage, isWord, strange, never)) << "nothing is lost";
    const std::vector<ReadWord> name{word("Обрезки", 60)}, figures{word("O6pe3Ku", 95)};
    EXPECT_TRUE(mirvak::losesWords(name, never, figures, isWord)) << "digits for letters";
    EXPECT_TRUE(mirvak::losesWords(name, never, {word("Tlepenucana", 83)}, never)) << "hardly a name";
    EXPECT_FALSE(mirvak::losesWords(name, never, {word("Ellery", 94)}, never)) << "a name";
    EXPECT_FALSE(mirvak::losesWords({word("И", 63)}, never, {word("17", 96)}, never)) << "a number";
    EXPECT_TRUE(mirvak::losesWords({word("ЗОБ", 63)}, never, {word("17", 96)}, never)) << "letters are left";
    EXPECT_TRUE(mirvak::losesWords({word("И", 63)}, never, {word("17", 80)}, never)) << "hardly read";
    EXPECT_FALSE(mirvak::losesWords({word("КТХ60З3", 60)}, never, {word("RTX6033", 93)}, isWord));
    const std::vector<ReadWord> half{word("to", 50), word("tbo", 40)};
    EXPECT_FALSE(mirvak::losesWords(half, isWord, russian, isWord)) << "less than half is known";
    EXPECT_TRUE(mirvak::losesWords(worn, isWord, worn, isWord)) << "no better";
}

#include "DocumentBuilder.h"

#include "Unicode.h"

#include <gtest/gtest.h>

#include <sstream>

using mirvak::Alignment;
using mirvak::Document;
using mirvak::ReadBlock;
using mirvak::ReadLine;
using mirvak::ReadPage;

namespace {

// Type of 40 px an em, every letter half an em wide, on a page of 300 dots per inch: 9.6 points.
constexpr int em = 40, pitch = 50, letter = em / 2;

/// A line whose words stand one letter apart; "_" is empty space of one letter more.
ReadLine lineAt(int left, int top, const std::string& text, double scale = 1)
{
    ReadLine line;
    std::istringstream stream(text);
    const int step = static_cast<int>(letter * scale);
    int x = left;
    for (std::string word; stream >> word; x += step) {
        if (word == "_")
            continue;
        const std::u32string letters = mirvak::fromUtf8(word);
        const int share = mirvak::isIdeographic(letters[0]) ? 2 : 1; // these fill an em
        const auto width = static_cast<int>(letters.size()) * step * share;
        const auto height = static_cast<int>(em * scale * 0.89); // a capital and a descender
        line.words.push_back({word, {x, top, x + width, top + height}, 95});
        x += width;
    }
    line.box = {
        line.words.front().box.left, top, line.words.back().box.right, top + line.words[0].box.height()};
    return line;
}

/// Lines below each other; spaces in front indent by one letter each.
ReadBlock blockAt(int left, int top, const std::vector<std::string>& texts)
{
    ReadBlock block;
    for (const std::string& text : texts) {
        if (!text.empty()) {
            const auto indent = static_cast<int>(text.find_first_not_of(' '));
            block.push_back(lineAt(left + indent * letter, top, text));
        }
        top += pitch;
    }
    return block;
}

Document build(std::vector<ReadBlock> blocks)
{
    ReadPage page{2480, 3508, 300, "eng", std::move(blocks)};
    return mirvak::buildDocument(page);
}

/// A page with these lines, the first 300 px from the left and from the top.
Document written(const std::vector<std::string>& lines)
{
    return build({blockAt(300, 300, lines)});
}

std::vector<std::string> textsOf(const Document& document)
{
    std::vector<std::string> texts;
    for (const auto& paragraph : document.paragraphs)
        texts.push_back(mirvak::toUtf8(paragraph.text));
    return texts;
}

using Texts = std::vector<std::string>;

} // namespace

TEST(DocumentBuilder, ParagraphsEndWhereTheNextWordHadRoom)
{
    const Document document = written({"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy",
                                       "Kqy Lqy Mqy Nqy Oqy Pqy Qqy Rqy Sqy Tqy",
                                       "Uqy Vqy Wqy.",
                                       "New Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy",
                                       "Aqy Bqy Eqd."});
    EXPECT_EQ(
        textsOf(document),
        (Texts{"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy Kqy Lqy Mqy Nqy Oqy Pqy Qqy Rqy Sqy Tqy Uqy Vqy Wqy.",
               "New Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy Aqy Bqy Eqd."}));
    EXPECT_EQ(document.paragraphs[0].alignment, Alignment::justified);
    EXPECT_EQ(document.paragraphs[0].firstIndent, 0);
}

TEST(DocumentBuilder, ParagraphsBeginWithAnIndentOrAfterAPause)
{
    const Document document = written({"    Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy",
                                       "Kqy Lqy Mqy Nqy Oqy Pqy Qqy Rqy Sqy Tqy",
                                       "    Bqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy",
                                       "Kqy Lqy Mqy Nqy Oqy Pqy Qqy Rqy Sqy Tqy",
                                       "",
                                       "Cqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy"});
    ASSERT_EQ(document.paragraphs.size(), 3U);
    EXPECT_EQ(document.paragraphs[1].text.substr(0, 3), U"Bqy");
    EXPECT_NEAR(document.paragraphs[1].firstIndent, 4 * letter * 1440 / 300, 1);
    EXPECT_EQ(document.paragraphs[1].leftIndent, 0);
    EXPECT_NEAR(document.paragraphs[2].spaceBefore, pitch * 1440 / 300, 3) << "one line was left out";
}

TEST(DocumentBuilder, AnIndentedPassageKeepsItsPlace)
{
    const Document document = written({"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy",
                                       "Kqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy",
                                       "",
                                       "        Kqy Lqy Mqy Nqy Oqy Pqy Qqy Rqy",
                                       "        Sqy Tqy Uqy Vqy Wqy Xqy Yqy Zqy",
                                       "        Uqy Vqy Wqy Xqy Yqy Zqy Aqy Bqy",
                                       "",
                                       "Cqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy"});
    ASSERT_EQ(document.paragraphs.size(), 3U);
    EXPECT_NEAR(document.paragraphs[1].leftIndent, 8 * letter * 1440 / 300, 1);
    EXPECT_EQ(document.paragraphs[1].firstIndent, 0);
    EXPECT_EQ(document.paragraphs[2].leftIndent, 0);
}

TEST(DocumentBuilder, AColumnIsMeasuredByItselfAndStandsApart)
{
    const Document document =
        build({blockAt(300, 300, {"Aqy Bqy Cqy Dqy Eqy", "Fqy Gqy Hqy Iqy Jqy", "Kqy."}),
               blockAt(1300, 300, {"Aqy Bqy Cqy Dqy Eqy", "Fqy.", "Gqy Hqy Iqy Jqy Kqy", "Lqy."})});
    EXPECT_EQ(textsOf(document),
              (Texts{"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy Kqy.",
                     "Aqy Bqy Cqy Dqy Eqy Fqy.",
                     "Gqy Hqy Iqy Jqy Kqy Lqy."}));
    ASSERT_EQ(document.paragraphs.size(), 3U);
    EXPECT_NEAR(document.paragraphs[1].spaceBefore, em * 1440 / 300, 3) << "a line's height";
    EXPECT_EQ(document.paragraphs[0].spaceBefore + document.paragraphs[2].spaceBefore, 0);
}

TEST(DocumentBuilder, ChineseLinesMayEndShort)
{
    const Document document = written({"    镇子的东头有一家旧书店门口种着两棵树",
                                       "镇上的人都叫他顾先生他的店不大只有三",
                                       "岁镇上的人都叫他顾先生他的店不大只有三间",
                                       "    每天清早顾先生先把门板一块一块卸下来"});
    EXPECT_EQ(document.paragraphs.size(), 2U);
}

TEST(DocumentBuilder, SizesMakeHeadings)
{
    ReadBlock block =
        blockAt(300, 500, {"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy", "Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy"});
    block.insert(block.begin(), lineAt(300, 300, "Tqitle", 2));
    block.insert(block.begin() + 1, lineAt(300, 420, "Sqection", 1.4));
    const Document document = build({block});
    ASSERT_EQ(document.paragraphs.size(), 3U);
    EXPECT_EQ(document.paragraphs[0].headingLevel, 1);
    EXPECT_EQ(document.paragraphs[1].headingLevel, 2);
    EXPECT_EQ(document.paragraphs[2].headingLevel, 0);
    EXPECT_NEAR(document.paragraphs[2].halfPoints, 2 * em * 72 / 300, 1);
    EXPECT_NEAR(document.paragraphs[0].halfPoints, 4 * em * 72 / 300, 2);

    ReadBlock notice;
    for (int line = 0; line < 4; ++line)
        notice.push_back(lineAt(300, 300 + 70 * line, "Aqy Bqy Cqy Dqy Eqy Fqy Gqy", 1.4));
    const std::vector<std::string> body(8, "Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy");
    const Document large = build({notice, blockAt(300, 700, body)});
    EXPECT_GT(large.paragraphs[0].halfPoints, large.paragraphs[1].halfPoints);
    EXPECT_EQ(large.paragraphs[0].headingLevel, 0) << "a passage of large print is no heading";
}

TEST(DocumentBuilder, LinesKeepTheirSide)
{
    const Document document = written({"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy",
                                       "                                Bqy 24y",
                                       "              Mqiddle Aqb"});
    ASSERT_EQ(document.paragraphs.size(), 3U);
    EXPECT_EQ(document.paragraphs[0].alignment, Alignment::left);
    EXPECT_EQ(document.paragraphs[1].alignment, Alignment::right);
    EXPECT_EQ(document.paragraphs[2].alignment, Alignment::centre);
}

TEST(DocumentBuilder, RowsOfATableShareTheirTabStops)
{
    const Document document = written({"Lqamp _ _ _ _ _ Bqrass _ _ _ _ _ _ 48.50",
                                       "Cqase _ _ _ _ _ Oqak, Rqd _ _ _ _ 9.90",
                                       "Kqey _ _ _ _ _ _ Tqn _ _ _ _ _ _ _ _ _ _ 0.05"});
    EXPECT_EQ(textsOf(document)[1], "Cqase\tOqak, Rqd\t9.90");
    for (const auto& row : document.paragraphs) {
        ASSERT_EQ(row.tabs.size(), 2U);
        EXPECT_FALSE(row.tabs[0].right);
        EXPECT_TRUE(row.tabs[1].right) << "numbers end below each other";
        EXPECT_EQ(row.tabs[1].position, document.paragraphs[0].tabs[1].position);
    }
    EXPECT_EQ(document.paragraphs[0].tabs[0].position, document.paragraphs[1].tabs[0].position);
    EXPECT_NEAR(document.paragraphs[0].tabs[0].position, 11 * letter * 1440 / 300, 1) << "from the margin";

    EXPECT_EQ(textsOf(written({"Lqamp _ _ _ _ _ Bqrass _ 48.50 Eqr"})), Texts{"Lqamp\tBqrass\t48.50 Eqr"})
        << "where columns part, less white parts them too";

    // Alone on its line, a cell at the right end is flush right, and one in the middle is not.
    const Document single =
        written({"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy",
                 "Aqy _ _ _ _ _ Bqy",
                 "Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy",
                 "Aqy _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ Bqy"});
    EXPECT_FALSE(single.paragraphs[1].tabs.at(0).right);
    EXPECT_TRUE(single.paragraphs[3].tabs.at(0).right);
}

TEST(DocumentBuilder, ThePaperIsThatOfThePicture)
{
    const auto block = blockAt(300, 450, {"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy"});
    const Document document = build({block});
    EXPECT_NEAR(document.paperWidth, 11904, 1); // A4
    EXPECT_NEAR(document.paperHeight, 16838, 1);
    EXPECT_NEAR(document.marginLeft, 1440, 1);
    EXPECT_NEAR(document.marginTop, 2160, 1);
    const Document corner = build({blockAt(1500, 3000, {"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy"})});
    EXPECT_NEAR(corner.marginRight, (2480 - 1500 - 39 * letter) * 1440 / 300, 1);
    EXPECT_NEAR(corner.marginLeft, 11904 / 3, 1) << "room for the text stays";
    EXPECT_EQ(corner.marginBottom, 1440) << "a short page leaves more, which is no margin";

    // The same page from far away or near carries the same number: its print would be of 3 or of 29 points.
    for (const double dpi : {960, 100}) {
        const Document scaled = mirvak::buildDocument({2480, 3508, dpi, "eng", {block}});
        EXPECT_EQ(scaled.paragraphs[0].halfPoints, 22) << dpi;
        EXPECT_NEAR(scaled.paperHeight / static_cast<double>(scaled.paperWidth), 3508.0 / 2480, 0.001);
    }
    EXPECT_EQ(mirvak::buildDocument({2480, 3508, 0, "eng", {block}}).paperWidth, document.paperWidth);
    EXPECT_TRUE(build({}).paragraphs.empty());
}

TEST(DocumentBuilder, UnsureWordsAreKnownInTextAndTables)
{
    ReadBlock block = blockAt(300,
                              300,
                              {"Aqy Bqy Cqy Dqy Eqy Fqy Gqy Hqy Iqy Jqy",
                               "Kqy Lqy Mqy",
                               "Lqamp _ _ _ _ _ Bqrass, Rqd _ _ _ _ _ _ 48.50"});
    for (const auto& [line, word] : {std::pair(0, 9), std::pair(1, 0), std::pair(2, 1), std::pair(2, 3)})
        block[static_cast<size_t>(line)].words[static_cast<size_t>(word)].isUnsure = true;
    const Document document = build({block});
    Texts unsure;
    for (const auto& paragraph : document.paragraphs) {
        for (const mirvak::Span& span : paragraph.unsure)
            unsure.push_back(mirvak::toUtf8(paragraph.text.substr(span.from, span.to - span.from)));
    }
    EXPECT_EQ(unsure, (Texts{"Jqy", "Kqy", "Bqrass,", "48.50"}));
}

TEST(DocumentBuilder, AReceiptIsNoLongerThanPaperCanBe)
{
    const ReadPage receipt{6000, 60000, 300, "eng", {blockAt(100, 100, {"Bread", "Milk"})}};
    const Document document = mirvak::buildDocument(receipt);
    EXPECT_NEAR(document.paperHeight, 31680, 1); // 22 inches, the most that word processors know
    EXPECT_NEAR(document.paperWidth, 3168, 1) << "in its own shape";
}

// The large letter with which an article begins, beside lines that were read without it.
#include "Initials.h"
#include "Models.h"
#include "SingleThread.h"
#include "TestPages.h"

#include "Boxes.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetrics>

namespace {

constexpr int left = 120, baseline = 150;
const testPages::Style style;

QFont fontOf(const testPages::Style& of)
{
    QFont font(of.family);
    font.setPixelSize(of.size);
    return font;
}

mirvak::Box boxOf(const QString& words, int x, int y)
{
    const QRect ink = QFontMetrics(fontOf(style)).tightBoundingRect(words).translated(x, y);
    return {ink.left(), ink.top(), ink.right() + 1, ink.bottom() + 1};
}

/// A paragraph whose first two lines leave room.
struct Opening
{
    QImage picture;
    mirvak::ReadPage page;
    mirvak::Box letter{};

    Opening(const char* letterText, const char* text) : picture(testPages::page({900, 480}, {}, style))
    {
        const QString initial = QString::fromUtf8(letterText);
        const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('|'), Qt::SkipEmptyParts);
        const testPages::Style large{style.family, 112, 0};
        testPages::print(picture, {initial}, large, left, baseline + style.pitch);
        const QRect ink =
            QFontMetrics(fontOf(large)).tightBoundingRect(initial).translated(left, baseline + style.pitch);
        letter = {ink.left(), ink.top(), ink.right() + 1, ink.bottom() + 1};
        page.width = picture.width();
        page.blocks.emplace_back();
        for (int i = 0; i < lines.size(); ++i) {
            const int y = baseline + i * style.pitch;
            int x = i < 2 ? letter.right + 14 : left;
            mirvak::ReadLine line;
            for (const QString& word : lines[i].split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
                testPages::print(picture, {word}, style, x, y);
                line.words.push_back({word.toStdString(), boxOf(word, x, y), 95});
                x += QFontMetrics(fontOf(style)).horizontalAdvance(word + QLatin1Char(' '));
            }
            line.box = mirvak::boxAround(line.words);
            page.blocks.front().push_back(line);
        }
    }

    /// The lines, with a bar behind each.
    std::string read(const char* language)
    {
        picture = picture.convertToFormat(QImage::Format_Grayscale8);
        const mirvak::PlainPicture plain{{picture.height(),
                                          picture.width(),
                                          CV_8UC1,
                                          picture.bits(),
                                          static_cast<size_t>(picture.bytesPerLine())},
                                         300};
        mirvak::Marks marks;
        marks.height = 20;
        const mirvak::SingleThread single;
        mirvak::Models models(OCR_MODELS);
        mirvak::TextModel* model = models.get(language);
        if (!model)
            return "no model";
        const mirvak::Limit limit{mirvak::Limit::Clock::now() + std::chrono::minutes(5)};
        mirvak::readInitials(page, plain, marks, *model, limit);
        std::string text;
        for (const mirvak::ReadLine& line : page.blocks.front()) {
            for (const mirvak::ReadWord& word : line.words)
                text += (&word == &line.words.front() ? "" : " ") + word.text;
            text += '|';
        }
        return text;
    }
};

} // namespace

TEST(Initials, AreReadWithTheWordThatTheyBegin)
{
    const char* lines = "he mill had stood idle|for eleven summers|when the stream returned|in the night|";
    EXPECT_EQ(Opening("T", lines).read("eng"), std::string("T") + lines);
    lines = "икто не считал дней|на этой станции|потому что часы|заводили рукой|";
    EXPECT_EQ(Opening("Н", lines).read("rus"), std::string("Н") + lines);
    lines = "winter among the books|is never a long one|when the stove is warm|all day|";
    EXPECT_EQ(Opening("A", lines).read("eng"), std::string("A ") + lines) << "a word of its own";
    EXPECT_EQ(Opening("", lines).read("eng"), lines) << "room for nothing";
    for (const char* ornament : {"■", "&", "§", "«", "©"})
        EXPECT_EQ(Opening(ornament, lines).read("eng"), lines) << ornament;
    Opening other("T", "he mill had stood idle|for eleven summers|when the stream returned|in the night|");
    other.page.blocks.front()[0].words.front().text = "be";
    EXPECT_EQ(other.read("eng").substr(0, 8), "be mill ") << "the rest is not read as it was";
}

TEST(Initials, ThatWereReadInALineBelowGoUp)
{
    Opening opening("T", "he mill had stood idle|for eleven summers|when the stream returned|in the night");
    std::vector<mirvak::ReadWord>& second = opening.page.blocks.front()[1].words;
    second.insert(second.begin(), {"T", opening.letter, 80});
    opening.page.blocks.front()[1].box = mirvak::boxAround(second);
    EXPECT_EQ(opening.read("eng").substr(0, 24), "The mill had stood idle|");
}

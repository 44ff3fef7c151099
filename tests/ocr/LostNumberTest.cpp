// Numbers in whose place the page's own model has read a sign.
#include "LostNumbers.h"
#include "SingleThread.h"
#include "TestPages.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetrics>

#include <string>

namespace {

constexpr int left = 120, baseline = 150;

/// A line of print whose first word was read as a stroke with a confidence of 31 percent; its next reading.
std::string
again(const QString& first, float confidence = 31, const QString& behind = QStringLiteral(" июня 2004 года"))
{
    const testPages::Style style;
    const QString line = first + behind;
    QImage picture = testPages::page({900, 250}, {line}, style, left, baseline);
    picture = picture.convertToFormat(QImage::Format_Grayscale8);
    const cv::Mat grey(picture.height(),
                       picture.width(),
                       CV_8UC1,
                       picture.bits(),
                       static_cast<size_t>(picture.bytesPerLine()));
    QFont font(style.family);
    font.setPixelSize(style.size);
    const QRect ink = QFontMetrics(font).tightBoundingRect(first).translated(left, baseline);
    const int top = ink.top(), bottom = ink.bottom() + 1;
    mirvak::ReadLine read;
    read.box = {ink.left(), top, left + QFontMetrics(font).horizontalAdvance(line), bottom};
    read.words = {{"|", {ink.left(), top, ink.right() + 1, bottom}, confidence},
                  {"июня", {ink.right() + 20, top, read.box.right, bottom}, 96}};
    mirvak::ReadPage page;
    page.blocks = {{read}};
    const mirvak::SingleThread single;
    mirvak::Models models(OCR_MODELS);
    const mirvak::TextModel* own = models.get("rus");
    if (!own)
        return "no model";
    const mirvak::Limit limit{mirvak::Limit::Clock::now() + std::chrono::minutes(5)};
    mirvak::findLostNumbers(page, grey, *own, models, limit);
    EXPECT_EQ(page.blocks.front().front().words.back().text, "июня") << "it was read well";
    return page.blocks.front().front().words.front().text;
}

} // namespace

TEST(LostNumbers, AreReadByAModelThatKnowsThem)
{
    EXPECT_EQ(again(QStringLiteral("11")), "11");
    EXPECT_EQ(again(QStringLiteral("17")), "17");
    EXPECT_EQ(again(QStringLiteral("|")), "|") << "a single stroke is a sign";
    EXPECT_EQ(again(QStringLiteral("1")), "|") << "as narrow as a sign";
    EXPECT_EQ(again(QStringLiteral("жук")), "|") << "letters are no number";
    EXPECT_EQ(again(QStringLiteral("шеф"), 31, QStringLiteral(" 17 дней")), "|") << "nor the one beside it";
    EXPECT_EQ(again(QStringLiteral("11"), 70), "|") << "what was read well stays";
}

// Where words stand: the arithmetic alone, and what the library tells of made pages.
#include "PlacedWords.h"

#include "PageMap.h"
#include "PagePicture.h"
#include "TempDir.h"
#include "TestPages.h"
#include "mirvakocr.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>
#include <QTransform>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

using mirvak::Box;
using mirvak::PlacedWord;
using mirvak::ReadLine;
using mirvak::ReadPage;
using mirvak::ReadWord;

namespace {

ReadPage pageOf(const ReadLine& line)
{
    ReadPage page;
    page.pictureWidth = 640;
    page.pictureHeight = 480;
    page.blocks = {{line}};
    return page;
}

void expectCorners(const PlacedWord& word, const std::vector<double>& wanted)
{
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(word.corners[i].x, wanted[2 * i], 1e-6) << word.text << i;
        EXPECT_NEAR(word.corners[i].y, wanted[2 * i + 1], 1e-6) << word.text << i;
    }
}

} // namespace

TEST(PagePicture, KnowsTheWayBackHoweverItWasTurnedAndScaled)
{
    mirvak::PagePicture page;
    page.grey = cv::Mat(240, 400, CV_8UC1, cv::Scalar(0));
    page.dpi = 100;
    page.grey(cv::Rect(60, 40, 8, 8)).setTo(255); // around (64, 44)
    for (const int turns : {1, 2, 3, -1}) {
        mirvak::turnPage(page, turns);
        mirvak::scalePage(page, 1.25);
        const cv::Moments spot = cv::moments(page.grey);
        const cv::Vec3d back =
            page.toPicture * cv::Vec3d(spot.m10 / spot.m00 + 0.5, spot.m01 / spot.m00 + 0.5, 1);
        EXPECT_NEAR(back[0], 64, 0.5) << turns;
        EXPECT_NEAR(back[1], 44, 0.5) << turns;
    }
    EXPECT_NEAR(page.dpi, 100 * std::pow(1.25, 4), 1e-9);
}

TEST(PagePicture, CountsFromThePixelsOuterCorners)
{
    // Twice as large: the first pixel's centre lies between the first two.
    const cv::Matx33d back = mirvak::pageMap::fromCentres({2, 0, 0.5, 0, 2, 0.5, 0, 0, 1});
    EXPECT_EQ(back * cv::Vec3d(0, 0, 1), cv::Vec3d(0, 0, 1));
    EXPECT_EQ(back * cv::Vec3d(30, 20, 1), cv::Vec3d(60, 40, 1));
}

TEST(PagePicture, AFramePrintedOnAPageIsNoPageAndASheetOnADeskIs)
{
    const TempDir folder;
    QImage picture(800, 1000, QImage::Format_RGB32);
    const QRect inner(90, 90, 620, 820);
    for (const bool isDesk : {false, true}) {
        picture.fill(isDesk ? QColor(60, 60, 62) : QColor(240, 240, 238));
        QPainter painter(&picture);
        painter.fillRect(inner, QColor(240, 240, 238));
        painter.setPen(QPen(Qt::black, 6));
        if (!isDesk)
            painter.drawRect(inner);
        painter.end();
        const std::string file = folder.file("page.png");
        ASSERT_TRUE(picture.save(QString::fromStdString(file)));
        const auto page = mirvak::openPage(file);
        ASSERT_TRUE(page);
        const cv::Vec3d corner = page->toPicture * cv::Vec3d(0, 0, 1);
        EXPECT_NEAR(corner[0] / corner[2], isDesk ? 96 : 0, 3);
        EXPECT_NEAR(corner[1] / corner[2], isDesk ? 96 : 0, 3);
        EXPECT_NEAR(page->grey.cols, isDesk ? 608 : 800, 4);
    }
}

TEST(PlacedWords, AreAsHighAsTheirLineUnlessItIsBent)
{
    ReadLine line{{{"The", {10, 20, 40, 40}, 90},
                   {"so", {50, 27, 70, 40}, 91},
                   {"gap", {80, 27, 110, 46}, 92},
                   {"|", {115, 2, 116, 80}, 60}}, // a speck that sticks out
                  {}};
    const mirvak::PlacedWords placed = mirvak::placeWords(pageOf(line));
    EXPECT_EQ(placed.width, 640);
    EXPECT_EQ(placed.height, 480);
    ASSERT_EQ(placed.words.size(), 4U);
    expectCorners(placed.words[1], {50, 20, 70, 20, 70, 46, 50, 46});
    EXPECT_EQ(placed.words[1].confidence, 91);
    std::swap(line.words[0], line.words[1]); // the lower one first
    expectCorners(mirvak::placeWords(pageOf(line)).words[0], {50, 20, 70, 20, 70, 46, 50, 46});
    // Falls by more than its height.
    line.words = {
        {"one", {0, 0, 50, 20}, 90}, {"two", {60, 15, 110, 35}, 90}, {"three", {120, 30, 170, 50}, 90}};
    expectCorners(mirvak::placeWords(pageOf(line)).words[2], {120, 30, 170, 30, 170, 50, 120, 50});
}

TEST(PlacedWords, HaveTheSpacesAndSignsOfTheRunningText)
{
    const auto wordsOf = [](const std::vector<const char*>& texts) {
        ReadLine line;
        int left = 0;
        for (const char* text : texts)
            line.words.push_back({text, {left++ * 50, 0, left * 50 - 5, 20}, 90});
        std::string shown;
        for (const PlacedWord& word : mirvak::placeWords(pageOf(line)).words)
            shown += word.text + (word.isSpaceBehind ? "_" : "|");
        return shown;
    };
    EXPECT_EQ(wordsOf({"by", "the", "window."}), "by_the_window.|");
    EXPECT_EQ(wordsOf({"мост", "был"}), "мост_был|");
    EXPECT_EQ(wordsOf({"书", "店", ",", "使用", "Qt", "5", "库"}), "书|店|，|使用|Qt_5|库|");
}

TEST(PlacedWords, AreNumberedByBlocksAndByLinesOfThePage)
{
    const ReadLine line{{{"word", {0, 0, 50, 20}, 90}}, {0, 0, 50, 20}};
    ReadPage page = pageOf(line);
    page.blocks = {{line, line}, {line}, {line, line}};
    std::string numbers;
    for (const PlacedWord& word : mirvak::placeWords(page).words)
        numbers += std::to_string(word.block) + std::to_string(word.line) + " ";
    EXPECT_EQ(numbers, "00 01 12 23 24 ");
}

TEST(PlacedWords, AreFollowedBackIntoThePictureAndNumbered)
{
    ReadPage page;
    const Box area{100, 50, 120, 150};
    ReadWord sideways{"up", area, 80, 1, {10, 2, 40, 12}};
    page.blocks = {{{{{"a", {0, 0, 10, 10}, 90}}, {}}, {{{"b", {0, 20, 10, 30}, 90}}, {}}},
                   {{{sideways}, {}}}};
    // The area is read after a turn to the right: x of the turned part runs up the page.
    page.frames.push_back({0, 1, 100, -1, 0, 150, 0, 0, 1});
    page.toPicture = {2, 0, 5, 0, 2, 7, 0, 0, 0.5}; // four times as large
    const std::vector<PlacedWord> words = mirvak::placeWords(page).words;
    ASSERT_EQ(words.size(), 3U);
    expectCorners(words[1], {10, 94, 50, 94, 50, 134, 10, 134});
    expectCorners(words[2], {418, 574, 418, 454, 458, 454, 458, 574});
    EXPECT_EQ(words[1].line, 1);
    EXPECT_EQ(words[1].block, 0);
    EXPECT_EQ(words[2].line, 2);
    EXPECT_EQ(words[2].block, 1);
}

namespace {

/// Lines of print with the place of each word.
struct KnownPage
{
    QImage image;
    QStringList words;
    QVector<QRectF> boxes; ///< from the top of a capital to the foot of a small letter
};

KnownPage knownPage()
{
    const QStringList lines{QStringLiteral("The harbour office keeps volumes."),
                            QStringLiteral("Anyone who asks may take one down"),
                            QStringLiteral("and read it by the window until five."),
                            QStringLiteral("Every evening the keeper counts them.")};
    const testPages::Style style;
    KnownPage page{testPages::page({1000, 500}, lines, style, 120, 150), {}, {}};
    QFont font(style.family);
    font.setPixelSize(style.size);
    const QFontMetricsF metrics(font, &page.image);
    double base = 150;
    for (const QString& line : lines) {
        int at = 0;
        for (const QString& word : line.split(QLatin1Char(' '))) {
            const double left = 120 + metrics.horizontalAdvance(line.left(at));
            page.words << word;
            page.boxes << QRectF(
                left, base - metrics.capHeight(), metrics.horizontalAdvance(word), metrics.capHeight());
            at += word.size() + 1;
        }
        base += style.pitch;
    }
    return page;
}

QPointF pointOf(const MirvakOCRPoint& point)
{
    return {double(point.x), double(point.y)};
}

} // namespace

// However the page lies in its picture, a word's box lies over its print, the first edge in reading
// direction.
TEST(RecognisedWords, LieOverTheirPrintHoweverThePageLies)
{
    const KnownPage page = knownPage();
    const double width = page.image.width(), height = page.image.height();
    QTransform onDesk; // a sheet seen from the side, on a dark desk
    ASSERT_TRUE(QTransform::quadToQuad(QPolygonF({{0, 0}, {width, 0}, {width, height}, {0, height}}),
                                       QPolygonF({{160, 120}, {1210, 150}, {1170, 690}, {130, 640}}),
                                       onDesk));
    struct Look
    {
        const char* name;
        QTransform place;
        QSize size;
        QColor ground;
    };
    const QSize same = page.image.size();
    const Look looks[] = {
        {"upright", QTransform(), same, Qt::white},
        {"on its side", QTransform(0, 1, -1, 0, height, 0), same.transposed(), Qt::white},
        {"on its head", QTransform(-1, 0, 0, -1, width, height), same, Qt::white},
        {"askew", QTransform().translate(60, 20).rotate(3), same + QSize(120, 100), QColor(250, 249, 246)},
        {"small", QTransform::fromScale(0.45, 0.45), same * 0.45, Qt::white},
        {"on a desk", onDesk, QSize(1340, 800), QColor(70, 50, 40)}};
    const TempDir folder;
    MirvakOCR ocr;
    ASSERT_EQ(ocr.MirvakOCR_Init(OCR_MODELS), MIRVAK_OCR_OK);
    std::vector<MirvakOCRWord> read;
    int readWidth = 0, readHeight = 0;
    EXPECT_EQ(ocr.MirvakOCR_GetWords(read, readWidth, readHeight), MIRVAK_OCR_NOT_READY);
    for (const Look& look : looks) {
        QImage seen(look.size, QImage::Format_RGB32);
        seen.fill(look.ground);
        QPainter painter(&seen);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.setTransform(look.place);
        painter.drawImage(0, 0, page.image);
        painter.end();
        const std::string path = folder.file("seen.png");
        ASSERT_TRUE(seen.save(QString::fromStdString(path)));
        ASSERT_EQ(ocr.MirvakOCR_Discern(path.c_str()), MIRVAK_OCR_OK) << look.name;
        ASSERT_EQ(ocr.MirvakOCR_GetWords(read, readWidth, readHeight), MIRVAK_OCR_OK);
        EXPECT_EQ(QSize(readWidth, readHeight), look.size) << look.name;
        int found = 0;
        size_t next = 0;
        for (int i = 0; i < page.words.size(); ++i) {
            const auto at =
                std::find_if(read.begin() + long(next), read.end(), [&](const MirvakOCRWord& word) {
                    return word.text == page.words[i].toStdString();
                });
            if (at == read.end())
                continue;
            next = size_t(at - read.begin()) + 1; // in reading order
            ++found;
            // Back on the page, where a letter's box ends a pixel or two beside its advance.
            const QTransform back = look.place.inverted();
            const QRectF wanted = page.boxes[i];
            const QPointF from = back.map(pointOf(at->corners[0])), to = back.map(pointOf(at->corners[2]));
            const double aside = qstrcmp(look.name, "on a desk") == 0 ? 7 : 5; // px; what warping may add
            EXPECT_NEAR(from.x(), wanted.left(), aside) << look.name << " " << at->text;
            EXPECT_NEAR(to.x(), wanted.right(), aside) << look.name << " " << at->text;
            EXPECT_NEAR(from.y(), wanted.top(), aside) << look.name << " " << at->text;
            // The line's feet, or what hangs below them.
            EXPECT_GT(to.y(), wanted.bottom() - aside) << look.name << " " << at->text;
            EXPECT_LT(to.y(), wanted.bottom() + 9 + aside) << look.name << " " << at->text;
        }
        EXPECT_GE(found, page.words.size() - 1) << look.name;
    }
    EXPECT_EQ(read.front().line, 0);
    EXPECT_EQ(read.back().line, 3);
}

TEST(RecognisedWords, OfALineThatRunsUpwardLieOverIt)
{
    QImage image = testPages::page({1300, 800},
                                   {QStringLiteral("The harbour office is closed on Friday,"),
                                    QStringLiteral("and the ferry does not sail before noon"),
                                    QStringLiteral("when the wind is from the north or west."),
                                    QStringLiteral("Parcels are kept for three weeks at most,"),
                                    QStringLiteral("and after that they are sent back again.")});
    QPainter painter(&image);
    QFont font(QStringLiteral("DejaVu Serif"));
    font.setPixelSize(30);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.translate(1200, 700);
    painter.rotate(-90);
    painter.drawText(0, 0, QStringLiteral("Printed by Winterbourne and daughters"));
    painter.end();
    const double before = QFontMetricsF(font, &image).horizontalAdvance(QStringLiteral("Printed by "));
    const double along = QFontMetricsF(font, &image).horizontalAdvance(QStringLiteral("Winterbourne"));
    const TempDir folder;
    const std::string path = folder.file("page.png");
    ASSERT_TRUE(image.save(QString::fromStdString(path)));
    MirvakOCR ocr;
    ASSERT_EQ(ocr.MirvakOCR_Init(OCR_MODELS), MIRVAK_OCR_OK);
    ASSERT_EQ(ocr.MirvakOCR_Discern(path.c_str()), MIRVAK_OCR_OK);
    std::vector<MirvakOCRWord> read;
    int width = 0, height = 0;
    ASSERT_EQ(ocr.MirvakOCR_GetWords(read, width, height), MIRVAK_OCR_OK);
    const auto word = std::find_if(
        read.begin(), read.end(), [](const MirvakOCRWord& one) { return one.text == "Winterbourne"; });
    ASSERT_NE(word, read.end());
    constexpr double near = 8; // pixels, of a letter 30 high
    EXPECT_NEAR(word->corners[3].x, 1200, near) << "its feet at the right, its begin below";
    EXPECT_NEAR(word->corners[3].y, 700 - before, near);
    EXPECT_NEAR(word->corners[2].x, 1200, near);
    EXPECT_NEAR(word->corners[2].y, 700 - before - along, near);
    EXPECT_LT(word->corners[0].x, 1200 - near);
}

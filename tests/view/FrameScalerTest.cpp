#include "FrameScaler.h"

#include <gtest/gtest.h>

#include <QColor>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace {

// Weights are kept in 1/256 along each axis and the rows are rounded in between.
constexpr int tolerance = 3;

QImage noise(const QSize& size)
{
    std::mt19937 random(5);
    QImage image(size, QImage::Format_RGB888);
    for (int y = 0; y < size.height(); ++y)
        for (int i = 0; i < size.width() * 3; ++i)
            image.scanLine(y)[i] = uchar(random());
    return image;
}

/// How much of [from, to) lies in the pixel that begins at `at`.
double overlap(double from, double to, int at)
{
    return std::max(0.0, std::min(to, at + 1.0) - std::max(from, double(at)));
}

/// The mean of the area that a shown pixel covers, in floating point.
std::vector<double> areaMean(const QImage& image, const QSize& displayed, int x, int y)
{
    const double stepX = double(image.width()) / displayed.width();
    const double stepY = double(image.height()) / displayed.height();
    std::vector<double> sum(3);
    for (int sy = int(y * stepY); sy < std::min(image.height(), int((y + 1) * stepY) + 1); ++sy) {
        for (int sx = int(x * stepX); sx < std::min(image.width(), int((x + 1) * stepX) + 1); ++sx) {
            const double share =
                overlap(x * stepX, (x + 1) * stepX, sx) * overlap(y * stepY, (y + 1) * stepY, sy);
            const QColor colour = image.pixelColor(sx, sy);
            sum[0] += share * colour.red();
            sum[1] += share * colour.green();
            sum[2] += share * colour.blue();
        }
    }
    for (double& value : sum)
        value /= stepX * stepY;
    return sum;
}

/// By how much each colour of each pixel is brighter than the mean of its area.
std::vector<double> errorsOf(const QImage& source, const QImage& scaled)
{
    std::vector<double> errors;
    for (int y = 0; y < scaled.height(); ++y) {
        for (int x = 0; x < scaled.width(); ++x) {
            const std::vector<double> mean = areaMean(source, scaled.size(), x, y);
            const QRgb pixel = scaled.pixel(x, y);
            errors.insert(errors.end(),
                          {qRed(pixel) - mean[0], qGreen(pixel) - mean[1], qBlue(pixel) - mean[2]});
        }
    }
    return errors;
}

TEST(FrameScaler, AveragesTheCoveredAreaWhenItReduces)
{
    const std::vector<std::pair<QSize, QSize>> cases{
        {{97, 61}, {96, 60}},   // hardly
        {{120, 90}, {60, 45}},  // a whole factor
        {{163, 122}, {65, 49}}, // odd sizes, the common factor of 2.5
        {{333, 217}, {31, 20}}, // more than four rows a pixel
        {{50, 40}, {1, 1}},     // all of it
        {{40, 300}, {40, 20}},  // one axis only
    };
    double sum = 0, count = 0;
    for (const auto& [from, to] : cases) {
        const QImage source = noise(from);
        FrameScaler scaler;
        const QImage& scaled = scaler.scale(source, to, QRect(QPoint(), to));
        ASSERT_EQ(scaled.size(), to);
        ASSERT_EQ(scaled.format(), QImage::Format_RGB32);
        for (const double error : errorsOf(source, scaled)) {
            ASSERT_LE(std::abs(error), tolerance)
                << from.width() << "x" << from.height() << " to " << to.width() << "x" << to.height();
            sum += error;
            ++count;
        }
    }
    EXPECT_LT(std::abs(sum / count), 0.2) << "a step that rounds down darkens by half a level";
}

TEST(FrameScaler, MakesAPartExactlyAsItIsInTheWholeAndKeepsPixelsThatNeedNoScaling)
{
    for (const QSize& displayed : {QSize(70, 51), QSize(163, 122), QSize(401, 299)}) {
        const QImage source = noise({163, 122});
        FrameScaler scaler;
        const QImage whole = scaler.scale(source, displayed, QRect(QPoint(), displayed)).copy();
        for (const QRect& part :
             {QRect(0, 0, 1, 1), QRect(11, 7, 40, 30), QRect(displayed.width() - 9, 20, 9, 31)})
            EXPECT_EQ(scaler.scale(source, displayed, part), whole.copy(part)) << displayed.width();
    }

    const QImage source = noise({61, 43});
    FrameScaler scaler;
    EXPECT_EQ(scaler.scale(source, source.size(), source.rect()),
              source.convertToFormat(QImage::Format_RGB32));
}

TEST(FrameScaler, BlendsNeighboursWhenItEnlarges)
{
    QImage source(2, 1, QImage::Format_RGB888);
    source.setPixelColor(0, 0, QColor(0, 200, 0));
    source.setPixelColor(1, 0, QColor(100, 0, 0));
    FrameScaler scaler;
    const QImage& scaled = scaler.scale(source, {8, 4}, {0, 0, 8, 4});
    // Centres of the shown pixels lie at -0.375, -0.125, 0.125, 0.375, 0.625, 0.875 ... of the source's.
    const std::vector<int> reds{0, 0, 13, 38, 63, 88, 100, 100};
    for (int x = 0; x < 8; ++x) {
        EXPECT_NEAR(qRed(scaled.pixel(x, 3)), reds[size_t(x)], 1) << x;
        EXPECT_NEAR(qGreen(scaled.pixel(x, 0)), 200 - 2 * reds[size_t(x)], 2) << x;
    }
}

TEST(FrameScaler, KeepsWhiteWhiteAndBlackBlackAtEveryScale)
{
    QImage source(101, 77, QImage::Format_RGB888);
    for (const QColor& colour : {QColor(Qt::white), QColor(Qt::black)}) {
        source.fill(colour);
        for (int width = 1; width < 230; width += 7) {
            const QSize to(width, std::max(1, width / 2));
            FrameScaler scaler;
            QImage expected(to, QImage::Format_RGB32);
            expected.fill(colour);
            EXPECT_EQ(scaler.scale(source, to, QRect(QPoint(), to)), expected) << width;
        }
    }
}

TEST(FrameScaler, ReadsOtherStridesAndFormats)
{
    const QImage source = noise({30, 20});
    const QRect all(0, 0, 13, 9);
    FrameScaler scaler;
    const QImage expected = scaler.scale(source, all.size(), all).copy();

    // Rows without padding, in a buffer that ends with the last pixel.
    std::vector<uchar> packed;
    for (int y = 0; y < 20; ++y)
        packed.insert(packed.end(), source.constScanLine(y), source.constScanLine(y) + 90);
    const std::unique_ptr<uchar[]> exact(new uchar[packed.size()]);
    std::copy(packed.begin(), packed.end(), exact.get());
    EXPECT_EQ(scaler.scale(QImage(exact.get(), 30, 20, 90, QImage::Format_RGB888), all.size(), all),
              expected);
    EXPECT_EQ(scaler.scale(source.convertToFormat(QImage::Format_ARGB32), all.size(), all), expected);
}

TEST(FrameScaler, PaintsANewFrameAndRefusesImpossiblePlaces)
{
    QImage source(40, 30, QImage::Format_RGB888);
    source.fill(Qt::red);
    FrameScaler scaler;
    const QRect all(0, 0, 20, 15);
    EXPECT_EQ(scaler.scale(source, all.size(), all).pixelColor(3, 3), QColor(Qt::red));
    source.fill(Qt::blue);
    EXPECT_EQ(scaler.scale(source, all.size(), all).pixelColor(3, 3), QColor(Qt::blue));
    EXPECT_TRUE(scaler.scale(source, all.size(), all.translated(1, 0)).isNull());
    EXPECT_TRUE(scaler.scale(source, {}, {}).isNull());
    EXPECT_TRUE(scaler.scale(QImage(), all.size(), all).isNull());
    EXPECT_EQ(scaler.scale(source, all.size(), all).pixelColor(3, 3), QColor(Qt::blue));
}

} // namespace

#include "PdfPageSize.h"

#include <gtest/gtest.h>

namespace {

constexpr double hundredthOfAPoint = 0.01; // the papers' sizes in points, as printed in tables

void expectSheet(int width, int height, double dpi, double points, double pointsDown)
{
    const mirvak::PdfPageSize sheet = mirvak::pdfPageSize(width, height, dpi, dpi);
    EXPECT_NEAR(sheet.width, points, hundredthOfAPoint) << width << " x " << height << " at " << dpi;
    EXPECT_NEAR(sheet.height, pointsDown, hundredthOfAPoint) << width << " x " << height << " at " << dpi;
    EXPECT_EQ(sheet.unit, 1);
}

} // namespace

TEST(PdfPageSize, TakesThePaperThatIsMeant)
{
    expectSheet(1654, 2339, 200, 595.28, 841.89);     // A4, to the pixel
    expectSheet(2310, 1663, 200, 841.89, 595.28);     // a little off on both sides, lying
    expectSheet(2480, 3508, 212.13, 841.89, 1190.55); // A3
    expectSheet(583, 827, 100, 419.53, 595.28);       // A5
    expectSheet(413, 583, 100, 297.64, 419.53);       // A6
    expectSheet(850, 1100, 100, 612, 792);            // Letter, which is no A4
    expectSheet(850, 1400, 100, 612, 1008);           // Legal
    expectSheet(693, 984, 100, 498.90, 708.66);       // B5
    expectSheet(717, 1012, 100, 515.91, 728.50);      // B5 as in Japan
    expectSheet(1011, 638, 300, 242.65, 153.01);      // an identity card
}

TEST(PdfPageSize, LeavesOtherSizesAsTheyAre)
{
    expectSheet(3264, 2448, 215, 3264 / 215.0 * 72, 2448 / 215.0 * 72);
    expectSheet(1654, 2339 * 103 / 100, 200, 1654 * 0.36, 2409 * 0.36); // A4 by one side only
    expectSheet(1000, 1000, 100, 720, 720);
    const mirvak::PdfPageSize fax = mirvak::pdfPageSize(1728, 1143, 204, 98);
    EXPECT_NEAR(fax.width, 1728 / 204.0 * 72, hundredthOfAPoint);
    EXPECT_NEAR(fax.height, 1143 / 98.0 * 72, hundredthOfAPoint);
}

TEST(PdfPageSize, KeepsTheLimitsOfTheFormat)
{
    const mirvak::PdfPageSize banner = mirvak::pdfPageSize(30000, 200, 72, 72);
    EXPECT_LE(banner.width, 14400);
    EXPECT_NEAR(banner.width * banner.unit, 30000, hundredthOfAPoint) << "the size itself stays";
    EXPECT_NEAR(banner.height * banner.unit, 200, hundredthOfAPoint);
    const mirvak::PdfPageSize receipt = mirvak::pdfPageSize(200, 30000, 72, 72);
    EXPECT_LE(receipt.height, 14400);
    EXPECT_NEAR(receipt.height * receipt.unit, 30000, hundredthOfAPoint);
    expectSheet(1, 1, 215, 3, 3);
    expectSheet(4, 2000, 300, 3, 480);
}

// The calls of the camera library.
#include "MadeCodes.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <gtest/gtest.h>

#include <zint.h>

namespace {

TEST(ZBarcode, KeepsTheTextsUntilTheNextPicture)
{
    MirvakCamera camera;
    EXPECT_EQ(camera.MirvakZBarcode_GetData(0), "");
    CodePage page(800, 500);
    CodePage::Place place;
    place.centre = {250, 250};
    page.add(BARCODE_QRCODE, "left", place);
    place.centre = {600, 250};
    page.add(BARCODE_AZTEC, "right", place);
    mirvak::Image image;
    image.pixels = page.rgb();
    ASSERT_EQ(camera.MirvakZBarcode_Discern(&image), 2);
    EXPECT_EQ(camera.MirvakZBarcode_GetData(0), "left");
    EXPECT_EQ(camera.MirvakZBarcode_GetData(1), "right");
    EXPECT_EQ(camera.MirvakZBarcode_GetData(1), "right") << "again";
    EXPECT_EQ(camera.MirvakZBarcode_GetData(2), "");
    EXPECT_EQ(camera.MirvakZBarcode_GetData(-1), "");
    void* blank = makeImageHandle(320, 240);
    EXPECT_EQ(camera.MirvakZBarcode_Discern(blank), 0);
    EXPECT_EQ(camera.MirvakZBarcode_GetData(0), "");
    camera.MirvakImage_Release(blank);
    EXPECT_EQ(camera.MirvakZBarcode_Discern(&image), 2);
    EXPECT_EQ(camera.MirvakZBarcode_Discern(nullptr), MIRVAK_BAD_HANDLE);
    EXPECT_EQ(camera.MirvakZBarcode_GetData(0), "") << "nothing of the picture before";
}

TEST(ZBarcode, IsStoppedAtAnyPointAndTellsHowFarItHasCome)
{
    MirvakCamera camera;
    CodePage page(800, 500);
    CodePage::Place place;
    place.centre = {400, 250};
    page.add(BARCODE_QRCODE, "whole", place);
    mirvak::Image image;
    image.pixels = page.rgb();
    struct
    {
        int stopAt, calls = 0, share = 0;
    } seen{1};
    const auto watch = [](int done, int count, void* context) {
        auto* told = static_cast<decltype(seen)*>(context);
        EXPECT_GE(done, told->share);
        EXPECT_EQ(count, 1000);
        told->share = done;
        return ++told->calls == told->stopAt ? 1 : 0;
    };
    while (camera.MirvakZBarcode_DiscernWatched(&image, watch, &seen) == MIRVAK_STOPPED) {
        EXPECT_EQ(seen.calls, seen.stopAt) << "asked on after the end";
        EXPECT_EQ(camera.MirvakZBarcode_GetData(0), "");
        seen = {seen.stopAt + 1};
    }
    EXPECT_EQ(camera.MirvakZBarcode_GetData(0), "whole");
    EXPECT_EQ(seen.share, 1000);
    EXPECT_GT(seen.stopAt, 5) << "it hardly asks";
}

} // namespace

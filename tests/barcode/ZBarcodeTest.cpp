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

} // namespace

#include "Pixels.h"
#include "TempDir.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include <filesystem>
#include <functional>

namespace {

class ImageFacade : public ::testing::Test
{
protected:
    struct Release
    {
        MirvakCamera* camera;
        void operator()(void* image) const { camera->MirvakImage_Release(image); }
    };
    using Handle = std::unique_ptr<void, Release>;
    Handle own(void* image) { return Handle(image, Release{&camera_}); }
    Handle white(int width = 400, int height = 200)
    {
        return own(makeImageHandle(width, height, {255, 255, 255}));
    }
    static cv::Mat& pixels(const Handle& image) { return static_cast<mirvak::Image*>(image.get())->pixels; }

    /// Smallest rectangle around what is no longer white.
    static cv::Rect inked(const Handle& image) { return otherThan(pixels(image), {255, 255, 255}); }
    MirvakCamera camera_;
};

TEST_F(ImageFacade, NullHandlesAreRefusedEverywhere)
{
    bool flag = false;
    double value = 0;
    unsigned char byte = 0;
    std::vector<void*> pages;
    std::vector<MirvakOutline> outlines;
    EXPECT_EQ(camera_.MirvakImage_DrawOutlines(nullptr, outlines, 0, 5), nullptr);
    EXPECT_EQ(camera_.MirvakImage_Clone(nullptr), nullptr);
    EXPECT_EQ(camera_.MirvakImage_DrawLine(nullptr, 0, 5), nullptr);
    EXPECT_EQ(camera_.MirvakImage_Merge(nullptr, nullptr, 0, 0, 1, 1), nullptr);
    EXPECT_EQ(camera_.MirvakImage_GetWidth(nullptr), 0);
    for (const int result : {camera_.MirvakImage_Release(nullptr),
                             camera_.MirvakImage_GetImageRGBData(nullptr, &byte),
                             camera_.MirvakImage_Rotate(nullptr, 90),
                             camera_.MirvakImage_Crop(nullptr, 0, 0, 1, 1),
                             camera_.MirvakImage_Deskew(nullptr, 15),
                             camera_.MirvakImage_DeskewAll(nullptr, 15, pages),
                             camera_.MirvakImage_FindPages(nullptr, outlines),
                             camera_.MirvakImage_Threshold(nullptr),
                             camera_.MirvakImage_WhitePaperSeal(nullptr, 0),
                             camera_.MirvakImage_Watermark(nullptr, "x", {0, 0}, 20, 0, 0),
                             camera_.MirvakImage_CheckPage(nullptr, flag, value, false, 0.3),
                             camera_.MirvakImage_Save("/tmp/x.jpg", nullptr, 95, 3)})
        EXPECT_EQ(result, MIRVAK_BAD_HANDLE);
}

// Copies share their pixels; whatever is done to one must not show in the other, nor later in the buffers
// that the library uses again.
TEST_F(ImageFacade, AChangeOfACopyLeavesTheOriginalAlone)
{
    using Change = std::function<int(void*)>;
    const std::vector<Change> changes = {
        [&](void* i) { return camera_.MirvakImage_Rotate(i, 90); },
        [&](void* i) { return camera_.MirvakImage_Rotate(i, 180); },
        [&](void* i) { return camera_.MirvakImage_Resize(i, 240, 160, 1); },
        [&](void* i) { return camera_.MirvakImage_Crop(i, 10, 10, 50, 50); },
        [&](void* i) { return camera_.MirvakImage_Resize(i, 120, 80, 1); },
        [&](void* i) { return camera_.MirvakImage_Deskew(i, 15); },
        [&](void* i) { return camera_.MirvakImage_DelBGColor(i); },
        [&](void* i) { return camera_.MirvakImage_Threshold(i); },
        [&](void* i) { return camera_.MirvakImage_EnhanceColor(i); },
        [&](void* i) { return camera_.MirvakImage_WhitePaperSeal(i, 0); },
        [&](void* i) { return camera_.MirvakImage_DocumentProcess(i); },
        [&](void* i) {
            return camera_.MirvakImage_Watermark(i, "text", {20, 20}, 30, 0xff0000, 0);
        },
    };
    for (size_t first = 0; first < changes.size(); ++first) {
        const Handle original = own(makeImageHandle(240, 160, {180, 170, 90}));
        cv::circle(pixels(original), {120, 80}, 40, {30, 60, 200}, -1);
        const cv::Mat before = pixels(original).clone();
        const Handle copy = own(camera_.MirvakImage_Clone(original.get()));
        ASSERT_EQ(changes[first](copy.get()), MIRVAK_OK) << first;
        // The second change would write into what the first one left behind.
        ASSERT_EQ(changes[(first + 1) % changes.size()](copy.get()), MIRVAK_OK) << first;
        EXPECT_EQ(cv::norm(pixels(original), before, cv::NORM_INF), 0) << first;
        const Handle other = own(camera_.MirvakImage_Clone(original.get()));
        ASSERT_EQ(camera_.MirvakImage_Threshold(original.get()), MIRVAK_OK);
        EXPECT_EQ(cv::norm(pixels(other), before, cv::NORM_INF), 0) << first;
    }
}

TEST_F(ImageFacade, EveryPageSideBySideBecomesAPictureOfItsOwn)
{
    const Handle desk = own(makeImageHandle(960, 640, {50, 55, 60}));
    const cv::Rect places[] = {{60, 60, 360, 240}, {500, 80, 300, 420}, {80, 360, 340, 220}};
    for (const cv::Rect& place : places) {
        pixels(desk)(place).setTo(cv::Scalar(235, 235, 230));
        pixels(desk)(cv::Rect(place.x + 40, place.y + 40, 30, 30)).setTo(cv::Scalar(place.x % 200, 20, 20));
    }
    static_cast<mirvak::Image*>(desk.get())->dpi = 300;
    const cv::Mat before = pixels(desk).clone();
    std::vector<void*> pages(2);
    ASSERT_EQ(camera_.MirvakImage_DeskewAll(desk.get(), 10, pages), MIRVAK_OK);
    EXPECT_EQ(cv::norm(pixels(desk), before, cv::NORM_INF), 0);
    ASSERT_EQ(pages.size(), 3U);
    for (size_t i = 0; i < 3; ++i) {
        const Handle page = own(pages[i]);
        EXPECT_NEAR(pixels(page).cols, places[i].width - 20, 5)
            << i; // edges nearly in one line bend each other
        EXPECT_NEAR(pixels(page).rows, places[i].height - 20, 5) << i;
        EXPECT_NEAR(pixels(page).at<cv::Vec3b>(45, 42)[0], places[i].x % 200, 3) << i;
        EXPECT_EQ(static_cast<mirvak::Image*>(page.get())->dpi, 300);
    }
    std::vector<MirvakOutline> outlines;
    ASSERT_EQ(camera_.MirvakImage_FindPages(desk.get(), outlines), MIRVAK_OK);
    ASSERT_EQ(outlines.size(), 3U);
    EXPECT_NEAR(outlines[1].corners[2].x, 800, 3);
    EXPECT_NEAR(outlines[1].corners[2].y, 500, 3);
    EXPECT_EQ(camera_.MirvakImage_DeskewAll(desk.get(), -1, pages), MIRVAK_BAD_ARGUMENT);
    EXPECT_TRUE(pages.empty());
    EXPECT_EQ(camera_.MirvakImage_DeskewAll(white().get(), 15, pages), MIRVAK_NOT_FOUND);
    EXPECT_EQ(camera_.MirvakImage_FindPages(white().get(), outlines), MIRVAK_NOT_FOUND);
    EXPECT_TRUE(outlines.empty());
}

TEST_F(ImageFacade, TheWatermarkStandsAtItsAnchorInItsColour)
{
    for (const char* text : {"Lumro", "样本 2024", "Образец"}) {
        const Handle image = white();
        ASSERT_EQ(camera_.MirvakImage_Watermark(image.get(), text, {100, 60}, 20, 0xff0000, 0), MIRVAK_OK)
            << text;
        const cv::Rect box = inked(image);
        EXPECT_GE(box.x, 99) << text;
        EXPECT_LE(box.x, 106) << text;
        EXPECT_GE(box.y, 57) << text; // tall characters rise a little above the line
        EXPECT_LE(box.br().y, 60 + 28) << text;
        EXPECT_GT(box.width, 30) << text;
        const cv::Scalar mean = cv::mean(pixels(image)(box));
        EXPECT_GT(mean[0], mean[1] + 20) << text; // red
        EXPECT_NEAR(mean[1], mean[2], 2) << text;
    }
    const Handle upright = white(200, 400);
    ASSERT_EQ(camera_.MirvakImage_Watermark(upright.get(), "Lumro", {100, 60}, 20, 0xff0000, 90), MIRVAK_OK);
    EXPECT_GT(inked(upright).height, inked(upright).width);
    EXPECT_GE(inked(upright).y, 58) << "clockwise: downwards";
    const auto widthOf = [&](const char* text) {
        const Handle image = white();
        EXPECT_EQ(camera_.MirvakImage_Watermark(image.get(), text, {100, 60}, 20, 0, 0), MIRVAK_OK);
        return inked(image).width;
    };
    EXPECT_GT(widthOf("H H"), widthOf("HH"));
    for (const char* sign : {"-", ".", "/", "#", "!"})
        EXPECT_GT(widthOf(sign), 0) << sign;
    const Handle veil = white();
    ASSERT_EQ(camera_.MirvakImage_Watermark(veil.get(), "HHH", {100, 60}, 40, 0x40000000, 0), MIRVAK_OK);
    double darkest = 0;
    cv::minMaxLoc(pixels(veil).reshape(1), &darkest);
    EXPECT_NEAR(darkest, 255 - 0x40, 2) << "a quarter of black";
}

// In Japan this letter has a long stroke down its left side, in China only the end of the line below it.
TEST_F(ImageFacade, AChineseWatermarkHasTheFormsOfChina)
{
    const Handle image = white();
    ASSERT_EQ(camera_.MirvakImage_Watermark(image.get(), "直", {100, 20}, 100, 0, 0), MIRVAK_OK);
    cv::Rect side = inked(image);
    ASSERT_GT(side.height, 50);
    side.width /= 6;
    cv::Mat rows;
    cv::reduce(pixels(image)(side).reshape(1), rows, 1, cv::REDUCE_MIN);
    EXPECT_LT(cv::countNonZero(rows < 128), side.height / 3);
}

TEST_F(ImageFacade, AWatermarkBeyondThePictureIsCutOff)
{
    const Handle image = white();
    EXPECT_EQ(camera_.MirvakImage_Watermark(image.get(), "far away", {-5000, 10}, 20, 0, 0), MIRVAK_OK);
    EXPECT_EQ(camera_.MirvakImage_Watermark(image.get(), "far away", {10, 5000}, 20, 0, 0), MIRVAK_OK);
    EXPECT_TRUE(inked(image).empty());
    EXPECT_EQ(camera_.MirvakImage_Watermark(image.get(), "broken \xff\xfe utf-8", {-20, 10}, 20, 0, 0),
              MIRVAK_OK);
    EXPECT_FALSE(inked(image).empty());
    EXPECT_EQ(camera_.MirvakImage_Watermark(image.get(), nullptr, {0, 0}, 20, 0, 0), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(camera_.MirvakImage_Watermark(image.get(), "x", {0, 0}, 0, 0, 0), MIRVAK_BAD_ARGUMENT);
}

TEST_F(ImageFacade, BytesComeOutWithTheirDescription)
{
    const Handle image = own(makeImageHandle(7, 5, {1, 2, 3}));
    std::vector<unsigned char> bytes(7 * 5 * 3);
    int width, height, channels, bits, stride, format;
    int count = static_cast<int>(bytes.size());
    ASSERT_EQ(camera_.MirvakImage_GetImageData(
                  image.get(), bytes.data(), width, height, channels, bits, stride, format, count),
              MIRVAK_OK);
    EXPECT_EQ((std::array<int, 7>{width, height, channels, bits, stride, format, count}),
              (std::array<int, 7>{7, 5, 3, 8, 21, 0, 105}));
    EXPECT_EQ(bytes.back(), 3);
    count = 104;
    EXPECT_NE(camera_.MirvakImage_GetImageData(
                  image.get(), bytes.data(), width, height, channels, bits, stride, format, count),
              MIRVAK_OK);
}

TEST_F(ImageFacade, ScalesInFourWays)
{
    for (const int mode : {-1, 0, 1, 2, 3, 4}) {
        const Handle image = white(40, 20);
        const bool known = mode >= 0 && mode <= 3;
        EXPECT_EQ(camera_.MirvakImage_Resize(image.get(), 30, 10, mode),
                  known ? MIRVAK_OK : MIRVAK_BAD_ARGUMENT);
        EXPECT_EQ(camera_.MirvakImage_GetWidth(image.get()), known ? 30 : 40) << mode;
    }
}

TEST_F(ImageFacade, SavingFailsCleanly)
{
    const TempDir folder;
    const Handle image = white();
    EXPECT_EQ(camera_.MirvakImage_Save(folder.file("a.tiff").c_str(), image.get(), 95, 3),
              MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(camera_.MirvakImage_Save(folder.file("no/such/a.jpg").c_str(), image.get(), 95, 3),
              MIRVAK_IO_ERROR);
    EXPECT_EQ(camera_.MirvakImage_Save(nullptr, image.get(), 95, 3), MIRVAK_BAD_ARGUMENT);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    EXPECT_EQ(camera_.MirvakImage_Save(folder.file("页 стр.JPG").c_str(), image.get(), 95, 3), MIRVAK_OK);
    EXPECT_EQ(camera_.MirvakImage_Save(folder.file("页 стр.JPG").c_str(), image.get(), 95, 3), MIRVAK_EXISTS);
    EXPECT_TRUE(std::filesystem::exists(folder.file("页 стр.JPG")));
}

} // namespace

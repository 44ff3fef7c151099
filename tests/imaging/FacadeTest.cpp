// The image calls as the program makes them.
#include "ImagePool.h"
#include "MadePages.h"
#include "Pixels.h"
#include "TempDir.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include <functional>
#include <limits>

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
    Handle own(const cv::Mat& rgb)
    {
        Handle image = own(makeImageHandle(1, 1));
        pixels(image) = rgb.clone();
        return image;
    }
    Handle white(int width = 400, int height = 200)
    {
        return own(makeImageHandle(width, height, {255, 255, 255}));
    }
    static mirvak::Image& image(const Handle& handle) { return *static_cast<mirvak::Image*>(handle.get()); }
    static cv::Mat& pixels(const Handle& handle) { return image(handle).pixels; }
    static cv::Mat random(int width, int height)
    {
        cv::Mat rgb(height, width, CV_8UC3);
        cv::RNG(static_cast<uint64_t>(width) * 1000 + static_cast<uint64_t>(height))
            .fill(rgb, cv::RNG::UNIFORM, 0, 256);
        return rgb;
    }
    /// Smallest rectangle around what is no longer white.
    static cv::Rect inked(const Handle& image) { return otherThan(pixels(image), {255, 255, 255}); }
    Handle marked(
        const char* text, MirvakPointF at, int size, int colour, float degrees = 0, cv::Size of = {400, 200})
    {
        Handle picture = white(of.width, of.height);
        EXPECT_EQ(camera_.MirvakImage_Watermark(picture.get(), text, at, size, colour, degrees), MIRVAK_OK)
            << text;
        return picture;
    }
    MirvakCamera camera_;
};

} // namespace

TEST_F(ImageFacade, NonsenseIsRefusedAndChangesNothing)
{
    const TempDir folder;
    const float never = std::numeric_limits<float>::quiet_NaN();
    const Handle image = own(random(40, 20));
    const cv::Mat before = pixels(image).clone();
    void* const i = image.get();
    const auto save = [&](const std::string& path) {
        return camera_.MirvakImage_Save(path.c_str(), i, 95, 3);
    };
    const auto mark = [&](const char* text, float y, int size, float degrees) {
        return camera_.MirvakImage_Watermark(i, text, {0, y}, size, 0, degrees);
    };
    EXPECT_THAT((std::vector<int>{camera_.MirvakImage_Rotate(i, never),
                                  camera_.MirvakImage_Crop(i, 40, 0, 9, 9),
                                  camera_.MirvakImage_Crop(i, 0, -20, 40, 20),
                                  camera_.MirvakImage_Crop(i, 0, 0, 0, 10),
                                  camera_.MirvakImage_Crop(i, 5, 5, -3, 10),
                                  camera_.MirvakImage_Resize(i, 9, 9, -1),
                                  camera_.MirvakImage_Resize(i, 9, 9, 4),
                                  camera_.MirvakImage_Resize(i, 0, 9, 1),
                                  camera_.MirvakImage_Resize(i, 9, -1, 1),
                                  camera_.MirvakImage_Resize(i, 100'000, 100'000, 1),
                                  camera_.MirvakImage_Deskew(i, -1),
                                  camera_.MirvakImage_WhitePaperSeal(i, 2),
                                  camera_.MirvakImage_WhitePaperSeal(i, -1),
                                  mark(nullptr, 0, 20, 0),
                                  mark("x", 0, 0, 0),
                                  mark("x", 0, 4001, 0),
                                  mark("x", never, 20, 0),
                                  mark("x", 0, 20, never),
                                  save(""),
                                  save(folder.file("a.tiff")),
                                  camera_.MirvakImage_Save(nullptr, i, 95, 3),
                                  camera_.MirvakImage_GetImageRGBData(i, nullptr)}),
                testing::Each(MIRVAK_BAD_ARGUMENT));
    EXPECT_EQ(difference(pixels(image), before), 0);
    EXPECT_EQ(save(folder.file("no/a.jpg")), MIRVAK_IO_ERROR);
    EXPECT_EQ(save(folder.file("页 стр.JPG")), MIRVAK_OK);
    EXPECT_EQ(save(folder.file("页 стр.JPG")), MIRVAK_EXISTS);
    EXPECT_THAT(folder.names(), testing::ElementsAre("页 стр.JPG"));
    bool flag = false;
    double value = 0;
    EXPECT_EQ(camera_.MirvakImage_CheckPage(nullptr, flag, value, false, 0.3), MIRVAK_BAD_HANDLE);
    EXPECT_EQ(camera_.MirvakImage_Save("/tmp/x.jpg", nullptr, 95, 3), MIRVAK_BAD_HANDLE);
    EXPECT_EQ(camera_.MirvakImage_Release(nullptr), MIRVAK_BAD_HANDLE);
    std::vector<void*> pages;
    std::vector<MirvakOutline> outlines;
    EXPECT_EQ(camera_.MirvakImage_DeskewAll(nullptr, 15, pages), MIRVAK_BAD_HANDLE);
    EXPECT_EQ(camera_.MirvakImage_FindPages(nullptr, outlines), MIRVAK_BAD_HANDLE);
    EXPECT_EQ(camera_.MirvakImage_DrawOutlines(nullptr, outlines, 0, 5), MIRVAK_BAD_HANDLE);
    EXPECT_EQ(camera_.MirvakImage_SharePixels(nullptr), nullptr);
    EXPECT_EQ(camera_.MirvakImage_GetWidth(nullptr) + camera_.MirvakImage_GetHeight(nullptr), 0);
    EXPECT_THAT((std::vector<void*>{camera_.MirvakImage_Clone(nullptr),
                                    camera_.MirvakImage_DrawLine(nullptr, 0, 5),
                                    camera_.MirvakImage_Merge(i, i, 0, 0, 0, 10),
                                    camera_.MirvakImage_Merge(i, i, 0, 0, 50'000, 50'000),
                                    camera_.MirvakImage_Merge(nullptr, i, 0, 0, 1, 1),
                                    camera_.MirvakImage_Merge(i, nullptr, 0, 0, 1, 1)}),
                testing::Each(nullptr));
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
        SCOPED_TRACE(first);
        EXPECT_EQ(changes[first](nullptr), MIRVAK_BAD_HANDLE);
        const Handle original = own(makeImageHandle(240, 160, {180, 170, 90}));
        image(original).dpi = 123;
        cv::circle(pixels(original), {120, 80}, 40, {30, 60, 200}, -1);
        const cv::Mat before = pixels(original).clone();
        const Handle copy = own(camera_.MirvakImage_Clone(original.get()));
        EXPECT_EQ(image(copy).dpi, 123);
        ASSERT_EQ(changes[first](copy.get()), MIRVAK_OK);
        // The second change would write into what the first one left behind.
        ASSERT_EQ(changes[(first + 1) % changes.size()](copy.get()), MIRVAK_OK);
        EXPECT_EQ(difference(pixels(original), before), 0);
        const Handle other = own(camera_.MirvakImage_Clone(original.get()));
        ASSERT_EQ(camera_.MirvakImage_Threshold(original.get()), MIRVAK_OK);
        EXPECT_EQ(difference(pixels(other), before), 0);
    }
}

TEST_F(ImageFacade, ACopyOfBorrowedPixelsOutlivesThem)
{
    std::vector<unsigned char> lent(30 * 20 * 3, 77);
    const Handle frame = white(1, 1);
    pixels(frame) = cv::Mat(20, 30, CV_8UC3, lent.data());
    const Handle copy = own(camera_.MirvakImage_Clone(frame.get()));
    std::fill(lent.begin(), lent.end(), 200);
    EXPECT_EQ(difference(pixels(copy), cv::Mat(20, 30, CV_8UC3, cv::Scalar::all(77))), 0);
}

TEST_F(ImageFacade, EveryPageSideBySideBecomesAPictureOfItsOwn)
{
    const Handle desk = own(makeImageHandle(960, 640, {50, 55, 60}));
    const cv::Rect places[] = {{60, 60, 360, 240}, {500, 80, 300, 420}, {80, 360, 340, 218}};
    for (const cv::Rect& place : places) {
        pixels(desk)(place).setTo(cv::Scalar(235, 235, 230));
        pixels(desk)(cv::Rect(place.x + 40, place.y + 40, 30, 30)).setTo(cv::Scalar(place.x % 200, 20, 20));
    }
    image(desk).dpi = 300;
    const cv::Mat before = pixels(desk).clone();
    std::vector<void*> pages(2);
    ASSERT_EQ(camera_.MirvakImage_DeskewAll(desk.get(), 10, pages), MIRVAK_OK);
    EXPECT_EQ(difference(pixels(desk), before), 0);
    ASSERT_EQ(pages.size(), 3U);
    for (size_t i = 0; i < 3; ++i) {
        const Handle page = own(pages[i]);
        // The upright sheet is an A6. At its scale nothing else is of a usual size, not the one that has the
        // shape of an identity card.
        const int cut = i == 1 ? 0 : 20;
        EXPECT_NEAR(pixels(page).cols, places[i].width - cut, 5)
            << i; // edges nearly in one line bend each other
        EXPECT_NEAR(pixels(page).rows, places[i].height - cut, 5) << i;
        EXPECT_NEAR(pixels(page).at<cv::Vec3b>(45 + 10 - cut / 2, 42 + 10 - cut / 2)[0], places[i].x % 200, 3)
            << i;
        EXPECT_NEAR(image(page).dpi, i == 1 ? 420 / 148.0 * 25.4 : 300, 1) << i;
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

TEST_F(ImageFacade, QuarterTurnsAreExactAtEverySize)
{
    // Smaller and larger than the tiles, with every remainder of the four pixels that are moved at once.
    for (const cv::Size size :
         {cv::Size(1, 1), {1, 9}, {5, 3}, {64, 64}, {65, 130}, {131, 67}, {200, 66}, {63, 127}}) {
        const cv::Mat before = random(size.width, size.height);
        for (int turns = -3; turns <= 4; ++turns) {
            const Handle picture = own(before);
            EXPECT_EQ(camera_.MirvakImage_Rotate(picture.get(), 90.0 * turns), MIRVAK_OK);
            cv::Mat wanted = before.clone(), transposed;
            for (int turn = 0; turn < (turns + 4) % 4; ++turn) { // a quarter clockwise: transpose and mirror
                cv::transpose(wanted, transposed);
                cv::flip(transposed, wanted, 1);
            }
            EXPECT_EQ(difference(pixels(picture), wanted), 0) << size << " turned " << turns;
        }
    }
}

TEST_F(ImageFacade, OtherAnglesTurnClockwiseAndCutNothingOff)
{
    const auto darkPixels = [](const cv::Mat& rgb) {
        cv::Mat plane;
        cv::extractChannel(rgb, plane, 0);
        return cv::countNonZero(plane < 128);
    };
    const Handle picture = white(300, 200);
    cv::Mat& rgb = pixels(picture);
    rgb(cv::Rect(0, 0, 300, 6)).setTo(cv::Scalar::all(0)); // marks at every border
    rgb(cv::Rect(0, 194, 300, 6)).setTo(cv::Scalar::all(0));
    rgb(cv::Rect(280, 80, 20, 40)).setTo(cv::Scalar(0, 0, 255));
    const int marked = darkPixels(rgb);
    EXPECT_EQ(camera_.MirvakImage_Rotate(picture.get(), 30), MIRVAK_OK);
    // 300 cos 30 + 200 sin 30 and 300 sin 30 + 200 cos 30, rounded up.
    EXPECT_EQ(rgb.size(), cv::Size(360, 324));
    EXPECT_NEAR(darkPixels(rgb), marked, 0.02 * marked);
    // The blue mark at the right middle moves down: (140, 0) from the centre becomes (121, 70).
    EXPECT_LE(cv::norm(rgb.at<cv::Vec3b>(162 + 70, 180 + 121), cv::Vec3b(0, 0, 255), cv::NORM_INF), 15);
    EXPECT_EQ(rgb.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 255, 255));
}

TEST_F(ImageFacade, CutsScalesAndJoinsPixelForPixel)
{
    const int most = std::numeric_limits<int>::max();
    const cv::Mat whole = random(50, 40);
    for (const auto& [asked, seen] : {std::pair(cv::Rect(10, 5, 20, 30), cv::Rect(10, 5, 20, 30)),
                                      {{-10, -5, 20, 30}, {0, 0, 10, 25}},
                                      {{40, 30, most, most}, {40, 30, 10, 10}},
                                      {{-5, -5, 1000, 1000}, {0, 0, 50, 40}}}) {
        const Handle cut = own(whole);
        EXPECT_EQ(camera_.MirvakImage_Crop(cut.get(), asked.x, asked.y, asked.width, asked.height),
                  MIRVAK_OK);
        EXPECT_EQ(difference(pixels(cut), whole(seen)), 0) << asked;
        EXPECT_EQ(image(cut).dpi, mirvak::cameraDpi);
    }
    const std::array<int, 4> methods{cv::INTER_NEAREST, cv::INTER_LINEAR, cv::INTER_AREA, cv::INTER_CUBIC};
    for (int mode = 0; mode < 4; ++mode) {
        const Handle scaled = own(whole);
        image(scaled).dpi = 200;
        EXPECT_EQ(camera_.MirvakImage_Resize(scaled.get(), 25, 30, mode), MIRVAK_OK);
        cv::Mat wanted;
        cv::resize(whole, wanted, {25, 30}, 0, 0, methods[static_cast<size_t>(mode)]);
        EXPECT_EQ(difference(pixels(scaled), wanted), 0) << mode;
        EXPECT_DOUBLE_EQ(image(scaled).dpi, 100) << "the paper stays as large as it was";
        EXPECT_EQ(camera_.MirvakImage_GetWidth(scaled.get()), 25);
        EXPECT_EQ(camera_.MirvakImage_GetHeight(scaled.get()), 30);
    }
    const Handle base = own(random(100, 80)), inset = own(makeImageHandle(30, 30, {1, 2, 3}));
    pixels(inset).rowRange(15, 30).setTo(cv::Scalar(200, 100, 50)); // another lower half
    image(base).dpi = 2 * image(inset).dpi;
    for (const cv::Rect place :
         {cv::Rect(20, 10, 14, 40), {-5, -5, 15, 40}, {90, 70, 60, 60}, {200, 200, 10, 10}}) {
        const Handle merged = own(
            camera_.MirvakImage_Merge(base.get(), inset.get(), place.x, place.y, place.width, place.height));
        ASSERT_TRUE(merged);
        cv::Mat wanted = pixels(base).clone();
        const cv::Rect frame({0, 0}, wanted.size()),
            lower(place.x, place.y + place.height / 2, place.width, place.height / 2);
        const cv::Rect seam = cv::Rect(lower.x, lower.y - 2, lower.width, 4) & frame; // there they are mixed
        wanted(place & frame).setTo(cv::Scalar(1, 2, 3));
        wanted(lower & frame).setTo(cv::Scalar(200, 100, 50));
        cv::Mat seen = pixels(merged).clone();
        if (!seam.empty())
            wanted(seam).copyTo(seen(seam));
        EXPECT_EQ(difference(seen, wanted), 0) << place;
        EXPECT_EQ(image(merged).dpi, image(base).dpi);
    }
}

TEST_F(ImageFacade, AnInsetThatIsMadeSmallerKeepsTheMeanOfItsPixels)
{
    cv::Mat checks(64, 64, CV_8UC3);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x)
            checks.at<cv::Vec3b>(y, x) = cv::Vec3b::all(x % 4 == 0 && y % 4 == 0 ? 240 : 0);
    const Handle base = white(16, 16), inset = own(checks);
    const Handle merged = own(camera_.MirvakImage_Merge(base.get(), inset.get(), 0, 0, 16, 16));
    EXPECT_LE(difference(pixels(merged), cv::Mat(16, 16, CV_8UC3, cv::Scalar::all(15))), 1);
}

TEST_F(ImageFacade, BytesComeOutWithTheirDescription)
{
    const cv::Mat rgb = random(7, 5);
    const Handle whole = own(rgb), part = own(random(20, 20));
    pixels(part) = pixels(part)(cv::Rect(3, 4, 7, 5)); // its rows lie apart
    rgb.copyTo(pixels(part));
    for (const Handle* handle : {&whole, &part}) {
        cv::Mat bytes(5, 7, CV_8UC3), described(5, 7, CV_8UC3);
        int width, height, channels, bits, stride, format, count = 105;
        const auto describe = [&] {
            return camera_.MirvakImage_GetImageData(
                handle->get(), described.data, width, height, channels, bits, stride, format, count);
        };
        EXPECT_EQ(camera_.MirvakImage_GetImageRGBData(handle->get(), bytes.data), MIRVAK_OK);
        EXPECT_EQ(difference(bytes, rgb), 0);
        EXPECT_EQ(describe(), MIRVAK_OK);
        EXPECT_EQ(difference(described, rgb), 0);
        EXPECT_EQ((std::array<int, 7>{width, height, channels, bits, stride, format, count}),
                  (std::array<int, 7>{7, 5, 3, 8, 21, 0, 105}));
        count = 104;
        EXPECT_EQ(describe(), MIRVAK_BAD_ARGUMENT);
    }
    EXPECT_EQ(camera_.MirvakColor_SetRgbaToInt(0x12, 0x34, 0x56, 0x78), 0x78123456);
}

TEST_F(ImageFacade, TheOutlineIsDrawnOnACopyInItsColourAndWidth)
{
    const Handle desk = own(made::desk({800, 600}, made::Desk::dark));
    made::lay(pixels(desk), made::blankPage({300, 400}), made::placed({400, 300}, {300, 400}, 0));
    const cv::Mat before = pixels(desk).clone();
    image(desk).dpi = 111;
    const Handle drawn = own(camera_.MirvakImage_DrawLine(desk.get(), 0x00ff4000, 7));
    EXPECT_EQ(difference(pixels(desk), before), 0);
    EXPECT_EQ(image(drawn).dpi, 111);
    cv::Mat changed;
    cv::inRange(pixels(drawn), cv::Scalar(250, 60, 0), cv::Scalar(255, 68, 5), changed);
    EXPECT_NEAR(cv::countNonZero(changed.row(300)), 17, 3) << "two lines of seven pixels and their edges";
    const cv::Rect box = cv::boundingRect(changed);
    EXPECT_LE(cv::norm(box.tl() - cv::Point(247, 97)), 4) << box;
    EXPECT_LE(cv::norm(box.br() - cv::Point(554, 504)), 4) << box;
    const Handle empty = white();
    EXPECT_TRUE(inked(own(camera_.MirvakImage_DrawLine(empty.get(), 0, 5))).empty()) << "no page, no line";

    MirvakVerdict verdict;
    EXPECT_EQ(camera_.MirvakImage_JudgePage(desk.get(), verdict), MIRVAK_OK);
    EXPECT_EQ(verdict.shot, MIRVAK_SHOT_LOOKING);
    ASSERT_TRUE(verdict.found);
    const cv::Point2f corner(verdict.page.corners[2].x, verdict.page.corners[2].y);
    EXPECT_LE(cv::norm(corner - cv::Point2f(box.br())), 8) << "half of the line, both ways";
    const Handle kept = own(camera_.MirvakImage_Clone(desk.get()));
    EXPECT_EQ(camera_.MirvakImage_DrawOutlines(desk.get(), {verdict.page}, 0x00ff4000, 7), MIRVAK_OK);
    EXPECT_EQ(difference(pixels(desk), pixels(drawn)), 0);
    EXPECT_EQ(difference(pixels(kept), before), 0);
    EXPECT_EQ(camera_.MirvakImage_JudgePage(empty.get(), verdict), MIRVAK_OK);
    EXPECT_FALSE(verdict.found);
    EXPECT_EQ(camera_.MirvakImage_JudgePage(nullptr, verdict), MIRVAK_BAD_HANDLE);
    EXPECT_EQ(verdict.shot, MIRVAK_SHOT_NO_PAGE);
}

TEST_F(ImageFacade, HalfOfAPageIsToldToLeaveThePictureWithoutAnOutline)
{
    const Handle half = own(made::desk({1632, 1224}, made::Desk::dark));
    made::lay(pixels(half), made::textPage({1000, 1414}, 30), made::placed({40, 560}, {700, 990}, 40), 0.8);
    made::shine(pixels(half), {0.8, 1, 3});
    MirvakVerdict verdict;
    for (int tenth = 0; tenth < 10; ++tenth) { // of a second
        image(half).taken = std::chrono::steady_clock::time_point(std::chrono::milliseconds(100 * tenth));
        ASSERT_EQ(camera_.MirvakImage_JudgePage(half.get(), verdict), MIRVAK_OK);
        EXPECT_FALSE(verdict.found);
    }
    EXPECT_EQ(verdict.shot, MIRVAK_SHOT_LEAVES_PICTURE);
}

TEST_F(ImageFacade, TheWatermarkStandsAtItsAnchorInItsColour)
{
    for (const char* text : {"Lumro", "样本 2024", "Образец"}) {
        SCOPED_TRACE(text);
        const Handle image = marked(text, {100, 60}, 20, 0xff4000);
        const cv::Rect box = inked(image);
        EXPECT_GE(box.x, 99);
        EXPECT_LE(box.x, 106);
        EXPECT_GE(box.y, 57); // tall characters rise a little above the line
        EXPECT_LE(box.br().y, 60 + 28);
        EXPECT_GE(box.br().y, 60 + 14);
        EXPECT_GT(box.width, 30);
        // Pixels are mixed of white and the ink.
        cv::Mat channels[3];
        cv::split(pixels(image), channels);
        EXPECT_EQ(cv::countNonZero(channels[0] != 255), 0);
        EXPECT_GT(cv::norm(channels[1], channels[2], cv::NORM_INF), 50);
        EXPECT_EQ(cv::countNonZero(channels[1] < channels[2]), 0);
    }
    const Handle upright = marked("Lumro", {100, 60}, 20, 0xff0000, 90, {200, 400});
    EXPECT_GT(inked(upright).height, inked(upright).width);
    EXPECT_GE(inked(upright).y, 58) << "clockwise: downwards";
    EXPECT_LE(inked(upright).br().x, 104) << "and its top to the right";
    EXPECT_NEAR(
        inked(marked("H", {20, 20}, 120, 0)).height, 2 * inked(marked("H", {20, 20}, 60, 0)).height, 3);
    const auto widthOf = [&](const char* text) { return inked(marked(text, {100, 60}, 20, 0)).width; };
    EXPECT_GT(widthOf("H H"), widthOf("HH"));
    for (const char* sign : {"-", ".", "/", "#", "!"})
        EXPECT_GT(widthOf(sign), 0) << sign;
    double darkest = 0;
    cv::minMaxLoc(pixels(marked("HHH", {100, 60}, 40, 0x40000000)).reshape(1), &darkest);
    EXPECT_NEAR(darkest, 255 - 0x40, 2) << "a quarter of black";
    // Parts outside are cut off.
    EXPECT_TRUE(inked(marked("far away", {-5000, 10}, 20, 0)).empty());
    EXPECT_TRUE(inked(marked("far away", {10, 5000}, 20, 0)).empty());
    EXPECT_FALSE(inked(marked("broken \xff\xfe utf-8", {-20, 10}, 20, 0)).empty());
}

// In Japan this letter has a long stroke down its left side, in China only the end of the line below it.
TEST_F(ImageFacade, AChineseWatermarkHasTheFormsOfChina)
{
    const Handle image = marked("直", {100, 20}, 100, 0);
    cv::Rect side = inked(image);
    ASSERT_GT(side.height, 50);
    side.width /= 6;
    cv::Mat rows;
    cv::reduce(pixels(image)(side).reshape(1), rows, 1, cv::REDUCE_MIN);
    EXPECT_LT(cv::countNonZero(rows < 128), side.height / 3);
}

TEST(ImagePool, KnowsNothingOfThePictureBefore)
{
    mirvak::ImagePool pool;
    const auto age = [](mirvak::Image& image) {
        image.dpi = 100;
        image.taken = std::chrono::steady_clock::now();
    };
    auto image = pool.take(80, 60);
    const void* const buffer = image->pixels.data;
    age(*image);
    cv::Mat shown = image->pixels;
    pool.giveBack(std::move(image));
    image = pool.take(80, 60);
    EXPECT_NE(image->pixels.data, buffer) << "somebody still shows it";
    age(*image);
    pool.giveBack(std::move(image));
    image = pool.take(80, 60);
    EXPECT_DOUBLE_EQ(image->dpi, mirvak::cameraDpi);
    EXPECT_FALSE(image->taken);
}

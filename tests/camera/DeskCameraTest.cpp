// The cameras of the virtual desk, below the library's facade.
#include "CameraTypes.h"
#include "DeskBackend.h"
#include "FrameCollector.h"
#include "OpenCamera.h"
#include "PictureSource.h"
#include "TempDir.h"

#include <gmock/gmock.h>

using namespace mirvak;

namespace {

constexpr auto patience = std::chrono::seconds(30);

class DeskCamera : public ::testing::Test
{
protected:
    DeskConfig::Camera settings(const std::string& source)
    {
        DeskConfig::Camera camera;
        camera.name = "Desk";
        camera.source = folder.file(source);
        camera.framesPerSecond = 200;
        camera.resolutions = {{0, 0}};
        camera.holdSeconds = 0;
        return camera;
    }

    /// The camera on a desk of its own; the back end stays until the end of the test.
    std::unique_ptr<CameraDevice> open(const DeskConfig::Camera& camera)
    {
        DeskConfig desk;
        desk.cameras = {camera};
        backend = std::make_unique<DeskBackend>(desk);
        cameras = backend->enumerate();
        MirvakResult why = MIRVAK_OK;
        return backend->open(cameras.at(0), why);
    }

    MirvakResult start(OpenCamera& camera, int index = 0)
    {
        return camera.start(2, index, 1, [this](Image* image) { collector.take(image); });
    }

    const TempDir folder;
    std::unique_ptr<DeskBackend> backend;
    std::vector<CameraInfo> cameras;
    ImagePool pool;
    FrameCollector collector; // outlives the cameras of the tests
};

} // namespace

TEST_F(DeskCamera, PlaysAFolderInNameOrderOnce)
{
    pictures::writeNumbered(folder.file("film"), 6, {32, 24});
    folder.write("film/notes.txt", "no picture");
    auto config = settings("film");
    config.loop = false;
    config.framesPerSecond = 20; // slow enough for the slowest test machine to miss nothing
    const auto device = open(config);
    ASSERT_TRUE(device);
    ASSERT_EQ(device->start(device->modes().at(0), 1), MIRVAK_OK);
    const WakeEvent never;
    std::vector<int> shown;
    JpegDecoder decoder;
    cv::Mat rgb;
    for (RawFrame frame; shown.empty() || shown.back() < 5;) {
        ASSERT_EQ(device->read(frame, patience, never), ReadStatus::Frame);
        ASSERT_EQ(frame.format, PixelFormat::Mjpeg) << "the file itself is the frame";
        ASSERT_TRUE(decoder.decode(frame.data, frame.size, rgb));
        shown.push_back(pictures::numberOf(rgb));
    }
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
    RawFrame frame;
    ASSERT_EQ(device->read(frame, patience, never), ReadStatus::Frame);
    ASSERT_TRUE(decoder.decode(frame.data, frame.size, rgb));
    EXPECT_EQ(pictures::numberOf(rgb), 5) << "the last picture stays";
}

TEST_F(DeskCamera, ALateReaderGetsTheNewestFrame)
{
    pictures::writeNumbered(folder.file("film"), 40, {32, 24});
    auto config = settings("film");
    config.loop = false;
    const auto device = open(config);
    ASSERT_TRUE(device);
    for (const int waiting : {1, 3}) {
        const auto begin = WakeEvent::Clock::now();
        ASSERT_EQ(device->start(device->modes().at(0), waiting), MIRVAK_OK);
        const WakeEvent never;
        never.waitUntil(begin + std::chrono::milliseconds(70)); // 14 frames at 200 a second
        RawFrame frame;
        ASSERT_EQ(device->read(frame, patience, never), ReadStatus::Frame);
        JpegDecoder decoder;
        cv::Mat rgb;
        ASSERT_TRUE(decoder.decode(frame.data, frame.size, rgb));
        EXPECT_GE(pictures::numberOf(rgb), 13 - (waiting - 1));
    }
}

TEST_F(DeskCamera, FitsPicturesOnBlackGround)
{
    pictures::write(folder.file("wide.jpg"), pictures::solidJpeg({400, 100}, {200, 40, 90}));
    auto config = settings("wide.jpg");
    config.resolutions = {{100, 100}, {800, 400}, {400, 100}};
    OpenCamera camera(open(config), pool);
    for (int index = 0; index < 3; ++index) {
        const CameraMode mode = *camera.modes().find(2, index);
        cv::Mat shown;
        FrameCollector frames;
        frames.onFrame = [&](Image& image) { image.pixels.copyTo(shown); };
        ASSERT_EQ(camera.start(2, index, 1, [&](Image* image) { frames.take(image); }), MIRVAK_OK);
        ASSERT_TRUE(frames.waitForFrames(1));
        camera.stop();
        ASSERT_EQ(shown.size(), cv::Size(mode.width, mode.height));
        const int inner = mode.width / 4; // height of the picture, which keeps its proportions
        const int top = (mode.height - inner) / 2;
        const auto isPicture = [&](int y) {
            return cv::norm(shown.at<cv::Vec3b>(y, mode.width / 2), cv::Vec3b(200, 40, 90), cv::NORM_INF) < 4;
        };
        EXPECT_TRUE(isPicture(top + 1)) << index;
        EXPECT_TRUE(isPicture(top + inner - 2)) << index;
        if (top > 1) {
            EXPECT_EQ(cv::norm(shown.rowRange(0, top - 1), cv::NORM_INF), 0) << index;
            EXPECT_EQ(cv::norm(shown.rowRange(top + inner + 1, mode.height), cv::NORM_INF), 0) << index;
        }
    }
}

TEST_F(DeskCamera, PrefersPicturesTakenAtTheChosenSize)
{
    std::filesystem::create_directories(folder.file("40x30"));
    std::filesystem::create_directories(folder.file("8x6"));
    std::filesystem::create_directories(folder.file("99x99 drafts"));
    pictures::write(folder.file("40x30/a.jpg"), pictures::solidJpeg({40, 30}, {200, 0, 0}));
    pictures::write(folder.file("8x6/a.jpg"), pictures::solidJpeg({8, 6}, {0, 0, 200}));
    const auto chosen = [&](cv::Size size) {
        const auto files = PictureSource::filesOf(folder.path(), size);
        return files.size() == 1 ? files[0].parent_path().filename().string() : "";
    };
    EXPECT_EQ(chosen({8, 6}), "8x6");
    EXPECT_EQ(chosen({40, 30}), "40x30");
    EXPECT_EQ(chosen({20, 15}), "40x30") << "the largest is scaled down";
    EXPECT_EQ(chosen({}), "40x30");
}

TEST_F(DeskCamera, PassesOnOnlyFilesLikeACameras)
{
    cv::Mat picture(cv::Size(80, 40), CV_8UC3, cv::Scalar(0, 0, 200));
    picture.colRange(0, 40).setTo(cv::Scalar(200, 0, 0));
    const pictures::Bytes plain = pictures::jpeg(picture);
    pictures::write(folder.file("plain.jpg"), plain);
    pictures::write(folder.file("progressive.jpg"), pictures::jpeg(picture, true));
    pictures::write(folder.file("turned.jpg"), pictures::withOrientation(plain, 6)); // stored a quarter left
    PictureSource source(
        {folder.file("plain.jpg"), folder.file("progressive.jpg"), folder.file("turned.jpg")});
    RawFrame frame;
    ASSERT_TRUE(source.frame(0, picture.size(), frame));
    EXPECT_EQ(frame.format, PixelFormat::Mjpeg);
    ASSERT_TRUE(source.frame(1, picture.size(), frame));
    EXPECT_EQ(frame.format, PixelFormat::Rgb24);
    for (const cv::Size size : {cv::Size(), cv::Size(20, 40)}) {
        ASSERT_TRUE(source.frame(2, size, frame));
        ASSERT_EQ(frame.format, PixelFormat::Rgb24);
        ASSERT_EQ(cv::Size(frame.width, frame.height), size.empty() ? cv::Size(40, 80) : size);
        const uint8_t* const upper = frame.data + frame.stride;
        const uint8_t* const lower = frame.data + frame.stride * size_t(frame.height - 2);
        EXPECT_GT(upper[0], 190) << "the left half is on top after a quarter turn clockwise";
        EXPECT_GT(lower[2], 190);
    }
}

TEST_F(DeskCamera, NativeDeliversEachPictureInItsOwnSize)
{
    const cv::Mat texture = pictures::textured({48, 36});
    pictures::write(folder.file("a.jpg"), pictures::solidJpeg({64, 20}, {0, 0, 0}));
    Image png;
    png.pixels = texture;
    pictures::write(folder.file("b.png"), encodeImage("png", png, 0));
    pictures::write(folder.file("c.jpg"), pictures::Bytes{0xff, 0xd8, 0xff, 0xe0}); // dropped, not shown
    auto config = settings("");
    config.framesPerSecond = 50;
    OpenCamera camera(open(config), pool);
    EXPECT_EQ(camera.modes().find(2, 0)->width, 64);
    bool exact = true;
    collector.onFrame = [&](Image& image) {
        if (image.pixels.cols == texture.cols)
            exact = exact && cv::norm(image.pixels, texture, cv::NORM_INF) == 0;
    };
    ASSERT_EQ(start(camera), MIRVAK_OK);
    ASSERT_TRUE(collector.waitForFrames(30));
    camera.stop();
    const auto sizes = collector.sizes();
    EXPECT_EQ(std::count(sizes.begin(), sizes.end(), cv::Size(64, 20)) +
                  std::count(sizes.begin(), sizes.end(), texture.size()),
              static_cast<long>(sizes.size()));
    EXPECT_GT(std::count(sizes.begin(), sizes.end(), texture.size()), 0);
    EXPECT_TRUE(exact) << "a PNG picture arrives pixel for pixel";
}

TEST_F(DeskCamera, BrokenFramesAreLeftOut)
{
    for (const bool scaled : {false, true}) {
        pictures::write(folder.file("p.jpg"), pictures::jpeg(pictures::textured({64, 48})));
        auto config = settings("p.jpg");
        config.corruptEvery = 4;
        config.resolutions = {scaled ? DeskConfig::Size{32, 24} : DeskConfig::Size{0, 0}};
        OpenCamera camera(open(config), pool);
        FrameCollector frames;
        ASSERT_EQ(camera.start(2, 0, 1, [&](Image* image) { frames.take(image); }), MIRVAK_OK);
        ASSERT_TRUE(frames.waitForFrames(12));
        camera.stop();
        // Each fourth of all frames: one broken for three whole ones, give or take the one at the end.
        EXPECT_NEAR(static_cast<double>(camera.pump().damaged()), frames.frames() / 3.0, 1.0) << scaled;
    }
}

TEST_F(DeskCamera, UnpluggedItComesBackWithTheNextSearch)
{
    pictures::writeNumbered(folder.file("film"), 2, {32, 24});
    auto config = settings("film");
    config.unplugAfter = 0.05;
    {
        OpenCamera camera(open(config), pool);
        ASSERT_EQ(start(camera), MIRVAK_OK);
        ASSERT_TRUE(collector.waitForEnd());
        EXPECT_EQ(start(camera), MIRVAK_NO_DEVICE);
        EXPECT_EQ(camera.stop(), MIRVAK_OK);
        EXPECT_EQ(collector.ends(), 1);
    }
    MirvakResult why = MIRVAK_OK;
    EXPECT_FALSE(backend->open(cameras[0], why));
    EXPECT_EQ(why, MIRVAK_NO_DEVICE);
    EXPECT_TRUE(backend->enumerate().empty()) << "it has to be plugged in again";
    const auto deadline = WakeEvent::Clock::now() + patience;
    for (cameras.clear(); cameras.empty() && WakeEvent::Clock::now() < deadline;)
        cameras = backend->enumerate();
    EXPECT_TRUE(backend->open(cameras.at(0), why));
}

TEST_F(DeskCamera, TheDeskFollowsItsFile)
{
    pictures::writeNumbered(folder.file("film"), 2, {32, 24});
    const auto file = folder.file("desk.cfg");
    backend = std::make_unique<DeskBackend>(DeskConfig(), file);
    const auto after = [&](const std::string& text) {
        folder.write("desk.cfg", text);
        backend->enumerate(); // it is read when it is found unchanged
        return backend->enumerate();
    };
    const std::string a = "{ name = \"A\"; source = \"film\"; fps = 200; }";
    cameras = after("cameras = ( " + a + " );");
    ASSERT_EQ(cameras.size(), 1U);
    MirvakResult why = MIRVAK_OK;
    OpenCamera camera(backend->open(cameras[0], why), pool);
    ASSERT_EQ(start(camera), MIRVAK_OK);
    EXPECT_EQ(after("cameras = ( ").size(), 1U) << "what cannot be read changes nothing";
    EXPECT_TRUE(collector.waitForFrames(collector.frames() + 2));
    EXPECT_TRUE(after("").empty());
    EXPECT_TRUE(collector.waitForEnd()) << "it was unplugged while it streamed";
    cameras = after("cameras = ( " + a + ", " + a + " );");
    ASSERT_EQ(cameras.size(), 2U);
    EXPECT_NE(cameras[0].identity, cameras[1].identity);
    EXPECT_TRUE(backend->open(cameras[0], why));
}

TEST_F(DeskCamera, StalledItSendsNothingAndStops)
{
    pictures::writeNumbered(folder.file("film"), 2, {32, 24});
    auto config = settings("film");
    config.stallAfter = 0.0;
    const auto device = open(config);
    ASSERT_TRUE(device);
    ASSERT_EQ(device->start(device->modes().at(0), 1), MIRVAK_OK);
    WakeEvent stop;
    RawFrame frame;
    EXPECT_EQ(device->read(frame, std::chrono::milliseconds(1), stop), ReadStatus::TimedOut);
    std::thread stopper([&] { stop.signal(); });
    EXPECT_EQ(device->read(frame, patience, stop), ReadStatus::Stopped);
    stopper.join();
}

TEST_F(DeskCamera, RefusesToOpenOrStartAsAsked)
{
    pictures::writeNumbered(folder.file("film"), 1, {32, 24});
    auto config = settings("film");
    config.failStart = true;
    OpenCamera camera(open(config), pool);
    EXPECT_EQ(start(camera), MIRVAK_IO_ERROR);
    EXPECT_EQ(start(camera, 5), MIRVAK_BAD_ARGUMENT);
    config.held = true;
    EXPECT_EQ(open(config)->start({PixelFormat::Mjpeg, 32, 24}, 1), MIRVAK_BUSY);
    config.failCreate = true;
    EXPECT_FALSE(open(config));
    for (const char* nothing : {"missing", "missing.jpg", "empty"}) {
        std::filesystem::create_directories(folder.file("empty"));
        testing::internal::CaptureStderr();
        EXPECT_FALSE(open(settings(nothing)));
        EXPECT_THAT(testing::internal::GetCapturedStderr(), ::testing::HasSubstr(nothing));
    }
}

TEST_F(DeskCamera, ThePicturesDecideTheTypeWhereNoneIsGiven)
{
    pictures::write(folder.file("small.jpg"), pictures::solidJpeg({32, 24}, {9, 9, 9}));
    pictures::write(folder.file("large.jpg"), pictures::solidJpeg({64, 48}, {9, 9, 9}));
    DeskConfig desk;
    desk.cameras = {settings("small.jpg"), settings("large.jpg"), settings("large.jpg")};
    desk.cameras[2].type = 3;
    auto list = DeskBackend(desk).enumerate();
    assignTypes(list, {});
    EXPECT_EQ(list[0].type, 2);
    EXPECT_EQ(list[1].type, 1);
    EXPECT_EQ(list[2].type, 3);
}

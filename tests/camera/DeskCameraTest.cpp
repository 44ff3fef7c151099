// The cameras of the virtual desk, below the library's facade.
#include "DeskBackend.h"
#include "FrameCollector.h"
#include "OpenCamera.h"
#include "PictureBytes.h"
#include "PictureSource.h"

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

    /// The number of the picture that comes next, in its file's own bytes; -1 when none does.
    int nextNumber(CameraDevice& device) const
    {
        RawFrame frame;
        cv::Mat rgb;
        const bool came = device.read(frame, patience, never) == ReadStatus::Frame &&
                          frame.format == PixelFormat::Mjpeg &&
                          JpegDecoder().decode(frame.data, frame.size, rgb);
        return came ? pictures::numberOf(rgb) : -1;
    }

    const TempDir folder;
    const WakeEvent never;
    std::unique_ptr<DeskBackend> backend;
    std::vector<CameraInfo> cameras;
    ImagePool pool;
    FrameCollector collector; // outlives the cameras of the tests
};

} // namespace

TEST_F(DeskCamera, PlaysAFolderInNameOrderOnce)
{
    pictures::writeFilm(folder, 6, {32, 24});
    folder.write("film/notes.txt", "no picture");
    auto config = settings("film");
    config.loop = false;
    config.framesPerSecond = 20; // slow enough for the slowest test machine to miss nothing
    const auto device = open(config);
    ASSERT_TRUE(device);
    ASSERT_EQ(device->start(device->modes().at(0), 1), MIRVAK_OK);
    std::vector<int> shown;
    do
        shown.push_back(nextNumber(*device));
    while (shown.back() >= 0 && shown.back() < 5);
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
    EXPECT_EQ(nextNumber(*device), 5) << "the last picture stays";
}

TEST_F(DeskCamera, ALateReaderGetsTheNewestFrame)
{
    pictures::writeFilm(folder, 40, {32, 24});
    auto config = settings("film");
    config.loop = false;
    const auto device = open(config);
    ASSERT_TRUE(device);
    for (const int waiting : {1, 3}) {
        const int newest = 13 - (waiting - 1);
        int seen = -1;
        // 14 frames at 200 a second, but a busy machine makes them later.
        for (std::chrono::milliseconds late(70); seen < newest && late.count() < 5000; late *= 2) {
            const auto begin = WakeEvent::Clock::now();
            ASSERT_EQ(device->start(device->modes().at(0), waiting), MIRVAK_OK);
            never.waitUntil(begin + late);
            seen = nextNumber(*device);
        }
        EXPECT_GE(seen, newest);
    }
}

TEST_F(DeskCamera, FitsPicturesOnBlackGround)
{
    folder.write("wide.jpg", pictures::solidJpeg({400, 100}, {200, 40, 90}));
    auto config = settings("wide.jpg");
    config.resolutions = {{100, 100}, {800, 400}, {400, 100}, {500, 50}};
    OpenCamera camera(open(config), pool);
    for (int index = 0; index < 4; ++index) {
        const CameraMode mode = *camera.modes().find(2, index);
        cv::Mat shown;
        FrameCollector frames;
        frames.onFrame = [&](Image& image) { image.pixels.copyTo(shown); };
        ASSERT_EQ(camera.start(2, index, 1, [&](Image* image) { frames.take(image); }), MIRVAK_OK);
        ASSERT_TRUE(frames.waitForFrames(1));
        camera.stop();
        ASSERT_EQ(shown.size(), cv::Size(mode.width, mode.height));
        const int high = std::min(mode.width / 4, mode.height), wide = 4 * high; // its proportions stay
        const cv::Point corner((mode.width - wide) / 2, (mode.height - high) / 2);
        const cv::Rect within(corner + cv::Point(1, 1), cv::Size(wide - 2, high - 2)),
            rim(corner, cv::Size(wide, high));
        const cv::Mat picture(within.size(), CV_8UC3, cv::Scalar(200, 40, 90));
        EXPECT_LT(cv::norm(shown(within), picture, cv::NORM_INF), 4) << index;
        shown(rim).setTo(0);
        EXPECT_EQ(cv::norm(shown, cv::NORM_INF), 0) << index;
    }
}

TEST_F(DeskCamera, PrefersPicturesTakenAtTheChosenSize)
{
    std::filesystem::create_directories(folder.file("40x30"));
    std::filesystem::create_directories(folder.file("8x6"));
    std::filesystem::create_directories(folder.file("99x99 drafts"));
    folder.write("40x30/a.jpg", pictures::solidJpeg({40, 30}, {200, 0, 0}));
    folder.write("8x6/a.JPG", pictures::solidJpeg({8, 6}, {0, 0, 200}));
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
    folder.write("plain.jpg", plain);
    folder.write("progressive.jpg", pictures::jpeg(picture, true));
    folder.write("turned.jpg", withOrientation(plain, 6)); // stored a quarter left
    PictureSource source(
        {folder.file("plain.jpg"), folder.file("progressive.jpg"), folder.file("turned.jpg")});
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const std::string file = folder.write("seen.jpg", withOrientation(plain, orientation));
        EXPECT_EQ(PictureSource({file}).firstSize(), orientation > 4 ? cv::Size(40, 80) : cv::Size(80, 40));
    }
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
    folder.write("a.jpg", pictures::solidJpeg({64, 20}, {0, 0, 0}));
    Image png;
    png.pixels = texture;
    folder.write("b.png", encodeImage("png", png, 0));
    folder.write("c.jpg", pictures::Bytes{0xff, 0xd8, 0xff, 0xe0}); // dropped, not shown
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
        folder.write("p.jpg", pictures::jpeg(pictures::textured({64, 48})));
        auto config = settings("p.jpg");
        config.corruptEvery = 4;
        config.resolutions = {scaled ? DeskConfig::Size{32, 24} : DeskConfig::Size{0, 0}};
        OpenCamera camera(open(config), pool);
        FrameCollector frames;
        std::atomic<int> before{0}; // the third one
        frames.onFrame = [&, number = 0](Image&) mutable {
            if (++number == 3)
                before = static_cast<int>(camera.pump().damaged());
        };
        ASSERT_EQ(camera.start(2, 0, 1, [&](Image* image) { frames.take(image); }), MIRVAK_OK);
        ASSERT_TRUE(frames.waitForFrames(12));
        camera.stop();
        EXPECT_EQ(before, 0) << "the fourth is the first broken one";
        // Each fourth of all frames: one broken for three whole ones, give or take the one at the end.
        EXPECT_NEAR(static_cast<double>(camera.pump().damaged()), frames.frames() / 3.0, 1.0) << scaled;
    }
}

TEST_F(DeskCamera, StalledItSendsNothingAndStops)
{
    pictures::writeFilm(folder, 2, {32, 24});
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
    config.unplugAfter = 0.0;
    const auto pulled = open(config);
    ASSERT_EQ(pulled->start(pulled->modes().at(0), 1), MIRVAK_OK);
    EXPECT_EQ(pulled->read(frame, patience, never), ReadStatus::Gone);
}

TEST_F(DeskCamera, EachPictureIsShownAsTheControlsMakeIt)
{
    pictures::writeFilm(folder, 3, {32, 24});
    auto config = settings("film");
    config.loop = false;
    config.framesPerSecond = 20;
    config.controls = {MIRVAK_BRIGHTNESS};
    const auto device = open(config);
    ASSERT_EQ(device->setControl(MIRVAK_BRIGHTNESS, 60), MIRVAK_OK); // ten pictures brighter
    ASSERT_EQ(device->start(device->modes().at(0), 10), MIRVAK_OK);
    int number = -1;
    for (RawFrame frame; number < 12;) {
        Image shown;
        ASSERT_EQ(device->read(frame, patience, never), ReadStatus::Frame);
        ASSERT_TRUE(FrameDecoder().decode(frame, 1, shown));
        ASSERT_GE(pictures::numberOf(shown.pixels), std::max(number, 10));
        number = pictures::numberOf(shown.pixels);
    }
}

TEST_F(DeskCamera, CamerasOfOneNameAreToldApart)
{
    DeskConfig desk;
    desk.cameras = {settings(""), settings(""), settings("")};
    std::set<std::string> identities;
    for (const CameraInfo& info : DeskBackend(desk).enumerate())
        identities.insert(info.identity);
    EXPECT_EQ(identities.size(), 3U);
}

TEST_F(DeskCamera, RefusesToOpenOrStartAsAsked)
{
    pictures::writeFilm(folder, 1, {32, 24});
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

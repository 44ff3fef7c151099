#include "FaceCameras.h"
#include "FaceCameraChoice.h"

#include "DeskFixture.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <QSignalSpy>

#include <future>
#include <thread>

namespace {

class FaceCamerasTest : public DeskTest
{
protected:
    ~FaceCamerasTest() override { library_.MirvakDevs_Deinit(); }

    faceCameraChoice::Found find(const std::string& cameras)
    {
        useDesk(cameras);
        library_.MirvakDevs_Deinit();
        library_.MirvakDevs_Init();
        return faceCameraChoice::find(library_);
    }
    std::string colour() { return camera("colour", Qt::red, 2); }
    std::string infrared() { return camera("infrared", Qt::gray, 3); }
    int resolutionOf(const std::string& sizes)
    {
        find("{ name = \"c\"; type = 2; source = \"page.jpg\"; resolutions = [ " + sizes + " ]; }");
        void* device = library_.MirvakDevice_Create(0);
        const int index = faceCameraChoice::resolution(library_, device);
        library_.MirvakDevice_Release(device);
        return index;
    }

    MirvakCamera library_;
};

TEST_F(FaceCamerasTest, TheLastOfEachKindIsTaken)
{
    const auto isFound = [&](const std::string& cameras, int colour, int infrared) {
        const faceCameraChoice::Found found = find(cameras);
        EXPECT_EQ(found.colour, colour) << cameras;
        EXPECT_EQ(found.infrared, infrared) << cameras;
        EXPECT_EQ(found.isAny(), colour >= 0);
    };
    const std::string main = camera("main", Qt::yellow, 1), last = camera("last", Qt::blue, 2);
    isFound(main, -1, -1);
    isFound(colour() + "," + main + "," + infrared() + "," + last, 3, 2);
    isFound(main + "," + infrared(), 1, 1); // in both roles
    isFound(main + "," + colour(), 1, -1);
}

TEST_F(FaceCamerasTest, TheResolutionIsThatOfSmallPictures)
{
    EXPECT_EQ(resolutionOf(R"("1280x960", "640x480", "320x240")"), 1);
    EXPECT_EQ(resolutionOf(R"("1280x960", "480x640")"), 1) << "by the number of pixels";
    EXPECT_EQ(resolutionOf(R"("1600x1200", "1280x960")"), 1) << "else the last one";
    EXPECT_EQ(resolutionOf(R"("1600x1200", "1280x960", "320x240")"), 1) << "or the one before";
    EXPECT_EQ(resolutionOf(R"("320x240")"), 0);
}

TEST_F(FaceCamerasTest, InfraredServesForColourThatIsSilentAndGivesItTimeToBegin)
{
    FaceFrames frames(library_, [](const QImage&) {});
    const FrameHandle infraredFrame = ownImage(library_, makeImageHandle(8, 8));
    const auto isServed = [&] {
        int told = 0;
        return frames.channel().take(std::chrono::seconds(60), [&] {
            frames.onFrame(FaceRole::infrared, infraredFrame.get());
            return ++told < 3;
        }) != nullptr;
    };
    EXPECT_TRUE(isServed()) << "no frame in colour has ever come";
    frames.begin(FaceRole::colour);
    EXPECT_FALSE(isServed()) << "the first one may be on its way";
    frames.want(FaceRole::infrared);
    EXPECT_TRUE(isServed());
}

TEST_F(FaceCamerasTest, TheLateEndOfAnOldStreamIsNoneOfTheNext)
{
    find(colour() + "," + infrared());
    const auto ignore = [](void*, void*, int, int, int, void*) {};
    FaceCameras cameras(library_, ignore, ignore, nullptr, [](const QImage&) {});
    const QSignalSpy lost(&cameras, &FaceCameras::lost);
    for (const bool isOld : {true, false}) {
        ASSERT_EQ(cameras.open(), FaceCameras::Result::Ok);
        cameras.onFrame(FaceRole::colour, nullptr);
        if (isOld) {
            ASSERT_EQ(cameras.open(), FaceCameras::Result::Ok) << "before it has been told of";
        }
        QCoreApplication::processEvents();
        EXPECT_EQ(lost.count(), isOld ? 0 : 1);
        EXPECT_EQ(cameras.isOpen(FaceRole::colour), isOld);
        EXPECT_TRUE(cameras.isOpen(FaceRole::infrared));
    }
}

TEST_F(FaceCamerasTest, ClosingSendsWhoeverWaitsForAFrameAway)
{
    find(colour());
    const auto ignore = [](void*, void*, int, int, int, void*) {};
    FaceCameras cameras(library_, ignore, ignore, nullptr, [](const QImage&) {});
    ASSERT_EQ(cameras.open(), FaceCameras::Result::Ok);
    ImageChannel& channel = cameras.frames().channel();
    testing::internal::CaptureStderr();
    auto frame =
        std::async(std::launch::async, [&] { return channel.take(std::chrono::seconds(60)) != nullptr; });
    while (!channel.isRequested())
        std::this_thread::yield();
    cameras.close();
    EXPECT_FALSE(frame.get());
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("timeout"), std::string::npos);
}

} // namespace

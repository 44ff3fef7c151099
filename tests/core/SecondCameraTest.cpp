#include "SecondCamera.h"

#include "ControlStore.h"
#include "DeskFixture.h"
#include "Image.h"

#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <mutex>
#include <thread>

namespace {

class SecondCameraTest : public DeskTest
{
protected:
    static void onFrame(void* image, void*, int, int, int, void* context)
    {
        static_cast<SecondCameraTest*>(context)->second_.onFrame(image);
    }
    void show(const QImage& frame)
    {
        const std::lock_guard lock(mutex_);
        shown_ = frame.size();
        ++frames_;
    }
    QString identity(int index) { return QString::fromStdString(camera_.MirvakDevice_GetDevIdentity(index)); }
    /// With the first camera of that desk as the main one.
    SecondCamera::OpenResult startOn(const std::string& desk)
    {
        useDesk(desk);
        EXPECT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK) << "a device is still open";
        return second_.start(identity(0));
    }
    bool framesCome(const QSize& size)
    {
        return QTest::qWaitFor(
            [&] {
                const std::lock_guard lock(mutex_);
                return shown_ == size;
            },
            10000);
    }

    MirvakCamera camera_;
    std::mutex mutex_;
    QSize shown_;
    std::atomic<int> frames_{0};
    SecondCamera second_{camera_, onFrame, this, [this](const QImage& frame) { show(frame); }};
};

TEST_F(SecondCameraTest, TheFirstOneThatIsNoDocumentCameraAndNotTheMainOneIsShown)
{
    const std::string small = "{ name = \"Small\"; type = 2; usb = \"0bda5801\"; source = \"page.jpg\"; "
                              "resolutions = [ \"160x120\" ]; }";
    ASSERT_EQ(startOn(camera() + ", " + camera() + ", " + camera("", 3) + ", " + small),
              SecondCamera::OpenResult::Ok);
    EXPECT_TRUE(framesCome({640, 480}));
    ASSERT_EQ(second_.start(identity(2)), SecondCamera::OpenResult::Ok)
        << "the infrared camera is the main one now";
    EXPECT_TRUE(framesCome({160, 120}));
    const FrameHandle frame = second_.channel().take(std::chrono::seconds(10));
    EXPECT_EQ(camera_.MirvakImage_GetWidth(frame.get()), 160);
    second_.stop();
    const int before = frames_;
    QTest::qWait(200);
    EXPECT_EQ(frames_, before);
}

TEST_F(SecondCameraTest, WhatWasSetAtItIsSetAgain)
{
    useDesk(camera() + ", " + camera("controls = true;", 2), solid(640, 480, Qt::darkGray));
    ASSERT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK);
    ControlStore(identity(1)).keep(MIRVAK_BRIGHTNESS, 40);
    ASSERT_EQ(second_.start(identity(0)), SecondCamera::OpenResult::Ok);
    const FrameHandle frame = second_.channel().take(std::chrono::seconds(10));
    ASSERT_TRUE(frame);
    EXPECT_NEAR(static_cast<mirvak::Image*>(frame.get())->pixels.at<cv::Vec3b>(0, 0)[0], 168, 3);
}

TEST_F(SecondCameraTest, FailuresAreToldApartAndLeaveNothingOpen)
{
    for (const auto& [desk, result] :
         {std::pair{camera() + ", " + camera(), SecondCamera::OpenResult::NoneFound},
          std::pair{camera() + ", " + camera("fail_create = true;", 2) + ", " + camera("", 2),
                    SecondCamera::OpenResult::CreateFailed},
          std::pair{camera() + ", " + camera("fail_start = true;", 3),
                    SecondCamera::OpenResult::StartFailed}}) {
        EXPECT_EQ(startOn(desk), result);
        EXPECT_FALSE(second_.isOpen());
        EXPECT_EQ(second_.identity(), QString());
    }
    ASSERT_EQ(startOn(camera("", 2)), SecondCamera::OpenResult::NoneFound);
    EXPECT_EQ(second_.start(QString()), SecondCamera::OpenResult::NoneFound) << "no main one is open";
}

TEST_F(SecondCameraTest, TheLossOfAnOldStreamLeavesTheNewOneAlone)
{
    QSignalSpy lost(&second_, &SecondCamera::lost);
    ASSERT_EQ(startOn(camera() + ", " + camera("unplug_after = 0.1;", 2) + ", " + camera("", 3)),
              SecondCamera::OpenResult::Ok);
    while (second_.channel().take(std::chrono::seconds(30))) {
    } // without the event loop: the message lies there
    ASSERT_EQ(second_.start(identity(1)), SecondCamera::OpenResult::Ok);
    QCoreApplication::processEvents();
    EXPECT_TRUE(second_.isOpen());
    EXPECT_EQ(lost.count(), 0);
}

TEST_F(SecondCameraTest, StoppingSendsTheWaitingCaptureAway)
{
    ASSERT_EQ(startOn(camera() + ", " + camera("stall_after = 0.1;", 2)), SecondCamera::OpenResult::Ok);
    ASSERT_TRUE(framesCome({640, 480}));
    ::testing::internal::CaptureStderr();
    std::thread capture([this] {
        while (second_.channel().take(std::chrono::seconds(30))) {
        }
    });
    while (!second_.channel().isRequested())
        std::this_thread::yield();
    second_.stop();
    capture.join();
    EXPECT_EQ(::testing::internal::GetCapturedStderr().find("timeout"), std::string::npos);
}

TEST_F(SecondCameraTest, UnpluggingClosesItAndSendsTheWaitingCaptureAway)
{
    QSignalSpy lost(&second_, &SecondCamera::lost);
    ASSERT_EQ(startOn(camera() + ", " + camera("stall_after = 0.2; unplug_after = 0.6;", 2)),
              SecondCamera::OpenResult::Ok);
    ASSERT_TRUE(framesCome({640, 480}));
    QTest::qWait(300); // it stalls
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(second_.channel().take(std::chrono::seconds(30)), nullptr);
    EXPECT_EQ(::testing::internal::GetCapturedStderr().find("timeout"), std::string::npos);
    ASSERT_TRUE(lost.count() == 1 || lost.wait());
    EXPECT_FALSE(second_.isOpen());
    EXPECT_EQ(camera_.MirvakDevs_Init(), MIRVAK_OK);
}

} // namespace

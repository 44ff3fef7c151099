#include "CameraSession.h"

#include "DeskFixture.h"
#include "Settings.h"

#include <QSignalSpy>
#include <QTest>

#include <atomic>

namespace {

std::atomic<int> frames{0};
CameraSession* listening = nullptr;

void onFrame(void* image, void*, int, int, int, void*)
{
    if (image)
        ++frames;
    else
        listening->noteStreamEnded();
}

class CameraSessionTest : public DeskTest
{
protected:
    void SetUp() override
    {
        frames = 0;
        listening = &session_;
    }
    bool framesCome()
    {
        const int before = frames;
        return QTest::qWaitFor([&] { return frames > before + 1; }, 10000);
    }

    MirvakCamera camera_;
    CameraSession session_{camera_, onFrame, nullptr};
};

TEST_F(CameraSessionTest, WithoutCamerasThereIsNothingToOpen)
{
    useDesk("");
    EXPECT_EQ(session_.discover(), 0);
    EXPECT_EQ(session_.defaultDevice(), -1);
    EXPECT_EQ(session_.select(0), CameraSession::OpenResult::CreateFailed);
    EXPECT_TRUE(session_.resolutions().isEmpty());
}

TEST_F(CameraSessionTest, TheFirstMainCameraIsTheDefault)
{
    useDesk(camera("", 2, "0bda5801") + ", " + camera() + ", " + camera());
    ASSERT_EQ(session_.discover(), 3);
    EXPECT_EQ(session_.deviceNames().size(), 3);
    EXPECT_EQ(session_.defaultDevice(), 1);
    EXPECT_TRUE(session_.hasSecondCamera());

    useDesk(camera("", 2, "0bda5801"));
    ASSERT_EQ(session_.discover(), 1);
    EXPECT_EQ(session_.defaultDevice(), -1);
}

TEST_F(CameraSessionTest, StreamsAndChangesTheResolution)
{
    useDesk(camera());
    session_.discover();
    ASSERT_EQ(session_.select(0), CameraSession::OpenResult::Ok);
    EXPECT_EQ(session_.resolutions(), (QStringList{QStringLiteral("640*480"), QStringLiteral("320*240")}));
    ASSERT_EQ(session_.start(0, QStringLiteral("640*480")), CameraSession::OpenResult::Ok);
    EXPECT_EQ(session_.state(), CameraSession::Streaming);
    EXPECT_TRUE(framesCome());

    session_.closeCamera();
    const int after = frames;
    EXPECT_FALSE(session_.isOpen());
    ASSERT_EQ(session_.start(1, QString()), CameraSession::OpenResult::Ok); // opens the closed device again
    EXPECT_EQ(session_.size(), QSize(1920, 1080));                          // no text to tell the size
    EXPECT_TRUE(QTest::qWaitFor([&] { return frames > after; }, 10000));
}

TEST_F(CameraSessionTest, FailuresOfTheDeviceAreToldApart)
{
    useDesk(camera("fail_create = true;") + ", " + camera("fail_start = true;"));
    session_.discover();
    EXPECT_EQ(session_.select(0), CameraSession::OpenResult::CreateFailed);
    EXPECT_FALSE(session_.isOpen());
    ASSERT_EQ(session_.select(1), CameraSession::OpenResult::Ok);
    EXPECT_EQ(session_.start(0, QStringLiteral("640*480")), CameraSession::OpenResult::StartFailed);
    EXPECT_NE(session_.state(), CameraSession::Streaming);
}

TEST_F(CameraSessionTest, AVanishedDeviceBlocksCapturesUntilItIsOpenedAgain)
{
    useDesk(camera("unplug_after = 0.2;"));
    session_.discover();
    QSignalSpy lost(&session_, &CameraSession::deviceLost);
    session_.select(0);
    ASSERT_EQ(session_.start(0, QStringLiteral("640*480")), CameraSession::OpenResult::Ok);
    ASSERT_TRUE(lost.wait(10000));
    EXPECT_EQ(static_cast<int>(session_.state()), -4);
    EXPECT_FALSE(session_.isOpen());

    useDesk(camera()); // plugged in again
    ASSERT_EQ(session_.discover(), 1);
    session_.select(0);
    ASSERT_EQ(session_.start(0, QStringLiteral("640*480")), CameraSession::OpenResult::Ok);
    EXPECT_EQ(session_.state(), CameraSession::Streaming);
    EXPECT_TRUE(framesCome());
    EXPECT_EQ(lost.count(), 1);
}

TEST_F(CameraSessionTest, OnlyOneModelMeasuresThePaper)
{
    useDesk(camera("", 1, "1b171840") + ", " + camera());
    session_.discover();
    session_.select(0);
    session_.start(0, QStringLiteral("640*480"));
    EXPECT_TRUE(session_.checksPaperSize());
    session_.setScanSize(1);
    EXPECT_FALSE(session_.checksPaperSize());
    session_.setScanSize(0);
    EXPECT_TRUE(session_.checksPaperSize());
    session_.select(1);
    session_.start(0, QStringLiteral("640*480"));
    session_.setScanSize(0);
    EXPECT_FALSE(session_.checksPaperSize());
}

TEST_F(CameraSessionTest, EndsCleanlyWhileStreaming)
{
    useDesk(camera());
    for (int i = 0; i < 10; ++i) {
        CameraSession session(camera_, onFrame, nullptr);
        session.discover();
        session.select(0);
        ASSERT_EQ(session.start(0, QStringLiteral("640*480")), CameraSession::OpenResult::Ok);
        const bool whileFramesCome = i % 2 == 0; // else in the middle of the start
        ASSERT_TRUE(!whileFramesCome || framesCome());
    }
    const int atTheEnd = frames;
    QCoreApplication::processEvents();
    EXPECT_EQ(frames, atTheEnd);
}

} // namespace

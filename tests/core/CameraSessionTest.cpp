#include "CameraSession.h"

#include "DeskFixture.h"
#include "FrameHandle.h"
#include "Image.h"
#include "Settings.h"
#include "TestImage.h"

#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <thread>

namespace {

std::atomic<int> frames{0};
std::atomic<int> corner{0}; // level of the newest frame's first pixel
std::atomic<bool> ended{false};
CameraSession* listening = nullptr;

void onFrame(void* image, void*, int, int, int, void*)
{
    if (image) {
        corner = static_cast<mirvak::Image*>(image)->pixels.at<cv::Vec3b>(0, 0)[0];
        ++frames;
        return;
    }
    listening->noteStreamEnded();
    ended = true;
}

class CameraSessionTest : public DeskTest
{
protected:
    void SetUp() override
    {
        frames = 0;
        ended = false;
        listening = &session_;
    }
    bool framesCome()
    {
        const int before = frames;
        return QTest::qWaitFor([&] { return frames > before + 1; }, 10000);
    }

    CameraSession::OpenResult select(int row)
    {
        return session_.select(session_.cameras().value(row).identity);
    }
    CameraSession::OpenResult start() { return session_.start(0, QStringLiteral("640*480")); }
    bool streams(int row) { return select(row) == Ok && start() == Ok; }
    static constexpr auto Ok = CameraSession::OpenResult::Ok;

    MirvakCamera camera_;
    CameraSession session_{camera_, onFrame, nullptr};
};

TEST_F(CameraSessionTest, WithoutCamerasThereIsNothingToOpen)
{
    static QStringList lines;
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { lines << text; });
    useDesk("");
    EXPECT_EQ(session_.discover(), 0);
    qInstallMessageHandler(before);
    EXPECT_EQ(lines, QStringList(QStringLiteral("devcount: 0")));
    EXPECT_EQ(select(0), CameraSession::OpenResult::CreateFailed);
    EXPECT_TRUE(session_.resolutions().isEmpty());
}

TEST_F(CameraSessionTest, StreamsAndChangesTheResolution)
{
    useDesk(camera());
    session_.discover();
    ASSERT_EQ(select(0), Ok);
    EXPECT_EQ(session_.resolutions(), (QStringList{QStringLiteral("640*480"), QStringLiteral("320*240")}));
    ASSERT_EQ(start(), Ok);
    EXPECT_EQ(session_.state(), CameraSession::Streaming);
    EXPECT_EQ(session_.size(), QSize(640, 480));
    EXPECT_TRUE(framesCome());

    session_.closeCamera();
    const int after = frames;
    EXPECT_FALSE(session_.isOpen());
    ASSERT_EQ(session_.start(1, QString()), Ok);   // opens the closed device again
    EXPECT_EQ(session_.size(), QSize(1920, 1080)); // no text to tell the size
    EXPECT_TRUE(QTest::qWaitFor([&] { return frames > after; }, 10000));
    for (const auto& [text, size] :
         {std::pair("wide * high", QSize(1920, 1080)), {" 320 * 240 ", {320, 240}}}) {
        session_.closeCamera();
        ASSERT_EQ(session_.start(1, QLatin1String(text)), Ok);
        EXPECT_EQ(session_.size(), size) << text;
    }
}

TEST_F(CameraSessionTest, FailuresOfTheDeviceAreToldApart)
{
    useDesk(camera("fail_create = true;") + ", " + camera("fail_start = true;"));
    session_.discover();
    EXPECT_EQ(select(0), CameraSession::OpenResult::CreateFailed);
    EXPECT_FALSE(session_.isOpen());
    ASSERT_EQ(select(1), Ok);
    EXPECT_EQ(start(), CameraSession::OpenResult::StartFailed);
    EXPECT_FALSE(session_.isOpen()) << "nobody may wait for its frames";
    EXPECT_NE(session_.state(), CameraSession::Streaming);
}

TEST_F(CameraSessionTest, AVanishedDeviceBlocksCapturesUntilItIsOpenedAgain)
{
    useDesk(camera("unplug_after = 0.2;"));
    session_.discover();
    QSignalSpy lost(&session_, &CameraSession::deviceLost);
    int found = 0; // by whoever hears of it
    QObject::connect(&session_, &CameraSession::deviceLost, &session_, [&] {
        found = static_cast<int>(session_.state());
    });
    ASSERT_TRUE(streams(0));
    ASSERT_TRUE(lost.wait(10000));
    EXPECT_EQ(found, -4);
    EXPECT_EQ(static_cast<int>(session_.state()), -4);
    EXPECT_FALSE(session_.isOpen());

    useDesk(camera()); // plugged in again
    ASSERT_EQ(session_.discover(), 1);
    ASSERT_TRUE(streams(0));
    EXPECT_EQ(session_.state(), CameraSession::Streaming);
    EXPECT_TRUE(framesCome());
    EXPECT_EQ(lost.count(), 1);
}

TEST_F(CameraSessionTest, TheLossOfAnOldStreamLeavesTheNewOneAlone)
{
    useDesk(camera("Alpha", Qt::red, 1, "unplug_after = 0.2;") + ", " + camera("Beta", Qt::green, 2) + ", " +
            camera("Gamma", Qt::blue, 2, "unplug_after = 0.2;"));
    session_.discover();
    QSignalSpy lost(&session_, &CameraSession::deviceLost);
    ASSERT_TRUE(streams(0));
    while (!ended) // without the event loop: the message lies there
        std::this_thread::yield();
    ASSERT_TRUE(streams(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(session_.state(), CameraSession::Streaming);
    EXPECT_EQ(session_.current().name, QStringLiteral("Beta"));
    EXPECT_TRUE(framesCome());
    ended = false;
    ASSERT_TRUE(streams(2));
    while (!ended)
        std::this_thread::yield();
    session_.closeCamera();
    QCoreApplication::processEvents();
    EXPECT_EQ(session_.state(), CameraSession::Closed) << "by the user";
    EXPECT_EQ(lost.count(), 0);
}

TEST_F(CameraSessionTest, FollowsTheListAndKeepsTheOpenCamera)
{
    const std::string alpha = camera("Alpha", Qt::red, 1), beta = camera("Beta", Qt::green, 2);
    useDesk(beta + ", " + alpha);
    ASSERT_EQ(session_.discover(), 2);
    EXPECT_TRUE(session_.hasSecondCamera());
    const QString wanted = session_.cameras()[1].identity;
    ASSERT_EQ(session_.select(wanted), Ok);
    ASSERT_EQ(start(), Ok);
    changeDesk(alpha);
    QSignalSpy changed(&session_, &CameraSession::camerasChanged);
    ASSERT_TRUE(QTest::qWaitFor([&] { return session_.cameras().size() == 1; }, 10000));
    EXPECT_FALSE(session_.hasSecondCamera());
    EXPECT_EQ(session_.current().identity, wanted);
    EXPECT_TRUE(framesCome());
    session_.closeCamera();
    ASSERT_EQ(start(), Ok);
    EXPECT_EQ(session_.current().name, QStringLiteral("Alpha"));
    EXPECT_GE(changed.count(), 1);
}

TEST_F(CameraSessionTest, WhatTheOpenCameraIsFollowsTheListToo)
{
    const auto sized = [](const char* name, const char* size) { // its picture decides what it is
        return std::string("{ name = \"") + name + "\"; source = \"page.jpg\"; resolutions = [ \"" + size +
               "\" ]; }";
    };
    useDesk(sized("Alpha", "320x240"));
    ASSERT_EQ(session_.discover(), 1);
    ASSERT_TRUE(streams(0));
    EXPECT_TRUE(session_.current().isMain());
    changeDesk(sized("Alpha", "320x240") + ", " + sized("Beta", "640x480"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return session_.cameras().size() == 2; }, 20000));
    EXPECT_FALSE(session_.current().isMain()) << "the larger one is";
    EXPECT_TRUE(session_.isOpen());
}

TEST_F(CameraSessionTest, OnlyOneModelMeasuresThePaper)
{
    QImage picture = solid(640, 480, Qt::black);
    QPainter(&picture).fillRect(70, 52, 500, 376, Qt::white); // more than half of it: more than an A4 page
    useDesk(camera("", 1, "1b171840") + ", " + camera(), picture);
    session_.discover();
    ASSERT_TRUE(streams(0));
    EXPECT_TRUE(session_.checksPaperSize());
    session_.setScanSize(1);
    EXPECT_FALSE(session_.checksPaperSize());
    EXPECT_TRUE(QTest::qWaitFor([] { return corner > 200; }, 10000)) << "A4";
    ASSERT_TRUE(streams(0));
    EXPECT_TRUE(QTest::qWaitFor([] { return corner < 50; }, 10000)) << "opened again, it shows all";
    session_.setScanSize(1);
    EXPECT_TRUE(QTest::qWaitFor([] { return corner > 200; }, 10000)) << "A4";
    session_.setScanSize(2);
    EXPECT_FALSE(session_.checksPaperSize());
    EXPECT_TRUE(QTest::qWaitFor([] { return corner < 50; }, 10000)) << "A3";
    session_.setScanSize(0);
    EXPECT_TRUE(session_.checksPaperSize());
    const FrameHandle dark = ownImage(camera_, makeImageHandle(640, 480, {0, 0, 0}));
    session_.checkPaperSize(dark.get()); // shows no paper to go by
    ASSERT_TRUE(framesCome() && framesCome());
    EXPECT_LT(corner, 50) << "as it was";
    ASSERT_TRUE(streams(1));
    session_.setScanSize(0);
    EXPECT_FALSE(session_.checksPaperSize());
}

TEST_F(CameraSessionTest, EndsCleanlyWhileStreaming)
{
    useDesk(camera());
    for (int i = 0; i < 10; ++i) {
        CameraSession session(camera_, onFrame, nullptr);
        session.discover();
        session.select(session.cameras()[0].identity);
        ASSERT_EQ(session.start(0, QStringLiteral("640*480")), Ok);
        const bool whileFramesCome = i % 2 == 0; // else in the middle of the start
        ASSERT_TRUE(!whileFramesCome || framesCome());
    }
    const int atTheEnd = frames;
    QCoreApplication::processEvents();
    EXPECT_EQ(frames, atTheEnd);
}

} // namespace

#include "ContinuousScan.h"

#include "CameraSession.h"
#include "DeskFixture.h"
#include "DiskFullAt.h"
#include "FrameDelivery.h"
#include "Settings.h"
#include "StillCapture.h"
#include "TestImage.h"

#include <QDir>
#include <QPainter>
#include <QTest>

namespace {

class ContinuousScanTest : public DeskTest
{
protected:
    ContinuousScanTest()
    {
        settings::setSavePath(store_, QString::fromStdString(folder().file("out")));
        delivery_.setPageCheck([this](void* image) { scan_.checkautopage(image); });
        // The signals come from other threads: by way of the event loop, as in the window.
        QObject::connect(
            &scan_, &ContinuousScan::pictureSaved, &here_, [this](const QString& path) { saved_ << path; });
        QObject::connect(&scan_, &ContinuousScan::saveFailed, &here_, [this] { ++failed_; });
        QObject::connect(&scan_, &ContinuousScan::autopageScanSign, &here_, [this] { ++found_; });
    }
    bool pagesBecome(int count, int timeoutMs)
    {
        return QTest::qWaitFor([=] { return found_ == count; }, timeoutMs);
    }
    ~ContinuousScanTest() override
    {
        finish();
        session_.shutDown();
        store_.GetSettings()->clear();
    }
    void finish()
    {
        delivery_.channel().close();
        scan_.finish();
    }
    /// Of a camera that delivers none that could be shown.
    void waitForAFrame()
    {
        start("corrupt_every = 1;");
        for (int i = 0; i < 4; ++i)
            scan_.onAutoScanTiemr();
        ASSERT_TRUE(QTest::qWaitFor([&] { return delivery_.channel().isRequested(); }));
    }
    static void onFrame(void* image, void*, int, int, int, void* context)
    {
        auto* self = static_cast<ContinuousScanTest*>(context);
        if (image)
            self->delivery_.onFrame(image);
        else
            self->session_.noteStreamEnded();
    }
    void start(const std::string& more = "", const QImage& picture = solid(640, 480, Qt::yellow))
    {
        useDesk(camera(more), picture);
        ASSERT_EQ(session_.discover(), 1);
        ASSERT_EQ(session_.select(session_.cameras()[0].identity), CameraSession::OpenResult::Ok);
        ASSERT_EQ(session_.start(0, QStringLiteral("640*480")), CameraSession::OpenResult::Ok);
    }
    int files() const { return int(QDir(settings::savePath(store_)).entryList(QDir::Files).size()); }

    mutable ConfigSettings store_;
    QObject here_;
    QStringList saved_;
    int failed_ = 0;
    int found_ = 0;
    MirvakCamera camera_;
    CaptureProcessor processor_{camera_};
    FrameDelivery delivery_{camera_, [](const QImage&) {}};
    StillCapture capture_{session_, delivery_, processor_, [] { return QRect(10, 20, 100, 50); }};
    ContinuousScan::TakeFrame take_ = [this](std::chrono::seconds limit) { return capture_.take(limit); };
    ContinuousScan scan_{camera_, capture_};
    CameraSession session_{camera_, onFrame, this};
};

TEST_F(ContinuousScanTest, EachTickTakesAPictureOnAThreadOfItsOwn)
{
    start();
    for (int i = 1; i <= 3; ++i) {
        scan_.onAutoScanTiemr();
        ASSERT_TRUE(QTest::qWaitFor([&] { return saved_.size() == i; }, 10000));
        EXPECT_EQ(QImage(saved_.last()).size(), i < 3 ? QSize(640, 480) : QSize(100, 50))
            << "cropped as chosen";
        const QColor colour = QImage(saved_.last()).pixelColor(40, 20);
        EXPECT_EQ(colour.hsvSaturation() < 50, i == 3) << "in the chosen colours";
        delivery_.setCroppingMode(i < 2 ? cropping::none : cropping::selection);
        settings::scanType.write(store_, i < 2 ? 0 : 2); // black and white
    }
    EXPECT_EQ(files(), 3);
}

// A camera that stands still lets the captures of several ticks wait. None of them outlives the scan.
TEST_F(ContinuousScanTest, TheEndWaitsForCapturesThatWaitForAFrame)
{
    waitForAFrame();
    finish();
    EXPECT_EQ(files(), 0);
    scan_.onAutoScanTiemr(); // too late: nothing may begin that nobody waits for
    scan_.finish();
}

// The captures of all ticks since then wait for a frame, and would show the same page over and over.
TEST_F(ContinuousScanTest, AfterAStallTheWaitingTicksTakeOnePictureTogether)
{
    waitForAFrame();
    const FrameHandle frame = ownImage(camera_, makeImageHandle(640, 480));
    ASSERT_TRUE(QTest::qWaitFor([&] {
        delivery_.onFrame(frame.get());
        return !delivery_.channel().isRequested();
    }));
    finish();
    EXPECT_EQ(files(), 1);
}

TEST_F(ContinuousScanTest, WithoutACameraOrAFolderATickSavesNothing)
{
    scan_.onAutoScanTiemr();
    scan_.finish();
    EXPECT_FALSE(scan_.scannerimage(take_));
    start();
    settings::setSavePath(store_, QString::fromStdString(folder().file("no/such/parent")));
    EXPECT_FALSE(scan_.scannerimage(take_));
    scan_.onAutoScanTiemr();
    EXPECT_TRUE(QTest::qWaitFor([&] { return failed_ == 2; }, 10000));
}

TEST_F(ContinuousScanTest, ALostCameraIsNotWaitedFor)
{
    start("unplug_after = 0.3;");
    ASSERT_TRUE(QTest::qWaitFor([&] { return session_.state() == CameraSession::Lost; }, 10000));
    int asked = 0;
    EXPECT_FALSE(scan_.scannerimage([&](std::chrono::seconds) {
        ++asked;
        return ownImage(camera_, nullptr);
    }));
    EXPECT_EQ(asked, 0);
}

TEST_F(ContinuousScanTest, OfSeveralPagesThoseAreToldThatAreSavedAndThatOneIsNot)
{
    QImage desk = solid(640, 480, Qt::black);
    QPainter sheets(&desk);
    for (const int left : {40, 240, 440})
        sheets.fillRect(left, 90, 160, 240, QColor(235, 235, 230));
    for (int i = 0; i < 4000; ++i) // the middle one makes a large file
        sheets.fillRect(
            255 + i * 37 % 130, 105 + i * 71 % 210, 2, 2, QColor::fromHsv(i * 53 % 360, 200, 180));
    sheets.end();
    start("", desk);
    delivery_.setCroppingMode(cropping::second);
    const DiskFullAt full(10'000);
    EXPECT_TRUE(scan_.scannerimage(take_));
    QCoreApplication::processEvents();
    EXPECT_EQ(saved_.size(), 2);
    EXPECT_EQ(failed_, 1);
}

TEST_F(ContinuousScanTest, APageIsFoundOnceAndOnlyWhileWatched)
{
    start("", page());
    EXPECT_FALSE(pagesBecome(1, 800)) << "nobody watches";
    scan_.startPages();
    ASSERT_TRUE(pagesBecome(1, 10000));
    EXPECT_FALSE(pagesBecome(2, 1200)) << "the page still lies there";
    scan_.stop();
    scan_.startPages(); // a new scan begins with the page that lies there
    EXPECT_TRUE(pagesBecome(2, 10000));
}

} // namespace

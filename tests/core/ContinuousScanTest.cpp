#include "ContinuousScan.h"

#include "CameraSession.h"
#include "DeskFixture.h"
#include "FrameDelivery.h"
#include "Settings.h"
#include "StillCapture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

namespace {

class ContinuousScanTest : public DeskTest
{
protected:
    ContinuousScanTest()
    {
        settings::setSavePath(store_, QString::fromStdString(folder().file("out")));
        delivery_.setPageCheck([this](void* image) { scan_.checkautopage(image); });
    }
    ~ContinuousScanTest() override
    {
        delivery_.channel().close();
        scan_.finish();
        session_.shutDown();
        store_.GetSettings()->clear();
    }
    static void onFrame(void* image, void*, int, int width, int height, void* context)
    {
        auto* self = static_cast<ContinuousScanTest*>(context);
        if (image)
            self->delivery_.onFrame(image, width, height);
        else
            self->session_.noteStreamEnded();
    }
    void start(const std::string& more = "", const QImage& picture = solid(640, 480, Qt::yellow))
    {
        useDesk(camera(more), picture);
        ASSERT_EQ(session_.discover(), 1);
        ASSERT_EQ(session_.select(0), CameraSession::OpenResult::Ok);
        ASSERT_EQ(session_.start(0, QStringLiteral("640*480")), CameraSession::OpenResult::Ok);
    }
    int files() const { return int(QDir(settings::savePath(store_)).entryList(QDir::Files).size()); }
    static QImage page()
    {
        QImage image = solid(640, 480, Qt::darkGray);
        for (int y = 60; y < 420; ++y) {
            for (int x = 160; x < 480; ++x)
                image.setPixel(
                    x, y, y % 24 < 8 && x > 190 && x < 450 ? qRgb(20, 20, 20) : qRgb(245, 245, 245));
        }
        return image;
    }

    mutable ConfigSettings store_;
    MirvakCamera camera_;
    CaptureProcessor processor_{camera_};
    FrameDelivery delivery_{camera_, [](const QImage&) {}};
    StillCapture capture_{session_, delivery_, processor_, [] { return QRect(); }};
    ContinuousScan scan_{camera_, capture_};
    CameraSession session_{camera_, onFrame, this};
};

TEST_F(ContinuousScanTest, EachTickTakesAPictureOnAThreadOfItsOwn)
{
    start();
    QSignalSpy saved(&scan_, &ContinuousScan::pictureSaved);
    for (int i = 1; i <= 3; ++i) {
        scan_.onAutoScanTiemr();
        ASSERT_TRUE(QTest::qWaitFor([&] { return saved.count() == i; }, 10000));
        EXPECT_TRUE(QFile::exists(saved.last().first().toString()));
    }
    EXPECT_EQ(files(), 3);
}

// A camera that stands still lets the captures of several ticks wait. None of them outlives the scan.
TEST_F(ContinuousScanTest, TheEndWaitsForCapturesThatWaitForAFrame)
{
    start("stall_after = 0.1;");
    QTest::qWait(300);
    for (int i = 0; i < 4; ++i)
        scan_.onAutoScanTiemr();
    ASSERT_TRUE(QTest::qWaitFor([&] { return delivery_.channel().isRequested(); }));
    delivery_.channel().close();
    scan_.finish();
    EXPECT_EQ(files(), 0);
    scan_.onAutoScanTiemr(); // too late: nothing may begin that nobody waits for
    scan_.finish();
}

TEST_F(ContinuousScanTest, WithoutACameraOrAFolderATickSavesNothing)
{
    scan_.onAutoScanTiemr();
    scan_.finish();
    EXPECT_FALSE(scan_.scannerimage());
    start();
    settings::setSavePath(store_, QString::fromStdString(folder().file("no/such/parent")));
    QSignalSpy failed(&scan_, &ContinuousScan::saveFailed);
    EXPECT_FALSE(scan_.scannerimage());
    scan_.onAutoScanTiemr();
    EXPECT_TRUE(QTest::qWaitFor([&] { return failed.count() == 2; }, 10000));
}

TEST_F(ContinuousScanTest, APageIsFoundOnceAndOnlyWhileWatched)
{
    QSignalSpy found(&scan_, &ContinuousScan::autopageScanSign);
    start("", page());
    EXPECT_FALSE(found.wait(800)) << "nobody watches";
    scan_.startPages();
    ASSERT_TRUE(found.count() > 0 || found.wait(10000));
    EXPECT_FALSE(found.wait(1200)) << "the page still lies there";
    scan_.stop();
    scan_.startPages(); // a new scan begins with the page that lies there
    EXPECT_TRUE(found.wait(10000));
    EXPECT_EQ(found.count(), 2);
}

} // namespace

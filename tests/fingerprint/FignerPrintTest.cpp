// The fingerprint dialog over sensor calls of its own, which answer as each test wants.
#include "FignerPrint.h"

#include "FreshSettings.h"
#include "Part.h"
#include "SensorMode.h"
#include "Settings.h"
#include "TempDir.h"
#include "zaz.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <cstring>
#include <functional>
#include <thread>

namespace {

struct Sensor
{
    int opens = ZAZ_OK, verifies = ZAZ_OK, uploads = ZAZ_OK, writes = ZAZ_OK; ///< what the calls answer
    std::function<int(int poll)> finger = [](int) { return ZAZ_NO_FINGER; };  ///< worker thread
    std::atomic<int> polls{0}, polledHandle{-1}, closed{0};
    int mode = 0;
};
Sensor* sensor = nullptr;

constexpr int someHandle = 42;
constexpr unsigned char ink = 90;

} // namespace

int ZAZ_MODE(int mode)
{
    return mode == 0 ? ZAZ_OK : ZAZ_BAD_ARGUMENT;
}
int ZAZ_SETPATH(int mode, int path)
{
    sensor->mode = mode;
    return path == 1 ? ZAZ_OK : ZAZ_BAD_ARGUMENT;
}
int ZAZOpenDeviceEx(int* handle, int type, void* port, int rate, int packet)
{
    EXPECT_TRUE(type == 2 && !port && rate == 2 && packet == 2);
    if (sensor->opens == ZAZ_OK)
        *handle = someHandle;
    return sensor->opens;
}
int ZAZVfyPwd(int handle, unsigned address, const unsigned char* password)
{
    EXPECT_TRUE(handle == someHandle && address == 0xFFFFFFFF && std::memcmp(password, "\0\0\0", 4) == 0);
    return sensor->verifies;
}
int ZAZGetImage(int handle, unsigned)
{
    sensor->polledHandle = handle;
    return sensor->finger(++sensor->polls);
}
int ZAZUpImage(int, unsigned, unsigned char* pixels, int* length)
{
    std::memset(pixels, ink, ZAZ_BYTES);
    *length = ZAZ_BYTES;
    return sensor->uploads;
}
int ZAZImgData2BMP(const unsigned char* pixels, const char* path)
{
    const QImage picture(pixels, ZAZ_WIDTH, ZAZ_HEIGHT, ZAZ_WIDTH, QImage::Format_Grayscale8);
    return sensor->writes == ZAZ_OK && picture.save(QString::fromUtf8(path), "BMP") ? ZAZ_OK : ZAZ_IO_ERROR;
}
int ZAZCloseDeviceEx(int)
{
    ++sensor->closed;
    return ZAZ_OK;
}

namespace {

class FignerPrintTest : public FreshSettings
{
protected:
    FignerPrintTest()
    {
        sensor = &sensor_;
        settings::setSavePath(settings, path());
        dialog_ = std::make_unique<FignerPrint>(nullptr, nullptr);
        dialog_->show();
    }
    ~FignerPrintTest() override
    {
        dialog_.reset();
        EXPECT_TRUE(QTest::qWaitFor([this] { return sensor_.closed >= workers_; }));
    }

    void capture()
    {
        ++workers_;
        QTest::mouseClick(part<QPushButton>(*dialog_, "buttonCapture"), Qt::LeftButton);
    }
    bool closes()
    {
        return QTest::qWaitFor([this] { return sensor_.closed == workers_; }, 60'000);
    }
    QString text(const char* label) const { return part<QLabel>(*dialog_, label)->text(); }
    QString status() const { return text("labelStatus"); }
    bool says(const char* status)
    {
        return QTest::qWaitFor([&] { return this->status() == QLatin1String(status); }, 60'000);
    }
    QString path() const { return QString::fromStdString(folder_.path()); }

    const TempDir folder_;
    Sensor sensor_;
    int workers_ = 0;
    std::unique_ptr<FignerPrint> dialog_;
};

TEST_F(FignerPrintTest, AFingerBecomesAFileThatIsShownAndHandedOn)
{
    std::atomic<bool> isThere{false};
    sensor_.finger = [&](int) { return isThere ? ZAZ_OK : ZAZ_NO_FINGER; };
    QSignalSpy handedOn(dialog_.get(), &FignerPrint::setImg2Thumb);
    capture();
    EXPECT_EQ(status(), QStringLiteral("Please put your finger on it"));
    EXPECT_EQ(sensor_.mode, 1);
    isThere = true;
    ASSERT_TRUE(says("Get FP data Success"));
    ASSERT_TRUE(closes());
    ASSERT_EQ(handedOn.count(), 1);
    const QString file = handedOn.first().first().toString();
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^%1/20\\d{15}\\.bmp$").arg(path())).match(file).hasMatch())
        << qPrintable(file);
    const QImage shown = part<QLabel>(*dialog_, "labelPicture")->pixmap(Qt::ReturnByValue).toImage();
    EXPECT_EQ(shown.size(), QSize(256, 360));
    EXPECT_EQ(qGray(shown.pixel(9, 9)), ink);

    isThere = false;
    EXPECT_TRUE(QDir(path()).removeRecursively()); // taken away meanwhile
    capture();                                     // beside nothing: the next one begins anew
    EXPECT_TRUE(part<QLabel>(*dialog_, "labelPicture")->pixmap(Qt::ReturnByValue).isNull());
    QHideEvent minimised; // by the window system
    QSpontaneKeyEvent::setSpontaneous(&minimised);
    qApp->notify(dialog_.get(), &minimised);
    isThere = true;
    EXPECT_TRUE(closes());
    EXPECT_TRUE(says("Get FP data Success")) << "a minimised window captures on";
    EXPECT_EQ(QDir(path()).entryList({QStringLiteral("*.bmp")}).size(), 1);
    std::atomic<bool> isHidden{false};
    sensor_.finger = [&](int) {
        while (!isHidden)
            std::this_thread::yield();
        return ZAZ_NO_FINGER;
    };
    sensor_.polls = 0;
    capture();
    dialog_->close();
    isHidden = true;
    EXPECT_TRUE(closes());
    EXPECT_LE(sensor_.polls, 1) << "that ends it";
    sensor_.finger = [](int) { return ZAZ_OK; };
    dialog_->show();
    EXPECT_EQ(status(), QString());

    const QString folderBefore = QDir::currentPath();
    QDir::setCurrent(path());
    ++workers_;
    dialog_->GetFPFromDev(QString());
    EXPECT_TRUE(says("Get FP data Success"));
    EXPECT_TRUE(QFile::exists(path() + QStringLiteral("/fp1.bmp")));
    QDir::setCurrent(folderBefore);
}

TEST_F(FignerPrintTest, PicturesKeepTheirProportionsAndTheModeThatIsToldIsTheOneToCome)
{
    dialog_->setimage(QImage(100, 100, QImage::Format_Grayscale8));
    EXPECT_EQ(part<QLabel>(*dialog_, "labelPicture")->pixmap(Qt::ReturnByValue).size(), QSize(256, 256));

    const auto press = [this] {
        QTest::mouseClick(part<QPushButton>(*dialog_, "buttonMode"), Qt::LeftButton);
        return text("labelNote");
    };
    EXPECT_EQ(press(), QStringLiteral("The mode stays as it is.")) << "without its file";
    QFile file(SensorMode::usualFile());
    ASSERT_TRUE(!file.exists() && file.open(QIODevice::WriteOnly));
    file.write("fpmode = 1;\n");
    file.close();
    for (const char* next : {"Mode 2 holds from the next start on.", "Mode 1 holds from the next start on."})
        EXPECT_EQ(press(), QLatin1String(next));
    EXPECT_TRUE(file.remove());
}

TEST_F(FignerPrintTest, ThePollsAreCounted)
{
    capture();
    ASSERT_TRUE(says("Read FP data timeout"));
    EXPECT_EQ(sensor_.polls, 1201);
    EXPECT_TRUE(closes());

    sensor_.polls = 0;
    sensor_.finger = [](int poll) { return poll == 1201 ? ZAZ_OK : ZAZ_NO_FINGER; };
    capture();
    ASSERT_TRUE(closes());
    EXPECT_TRUE(says("Get FP data Success")) << "the last poll is as good as the first";
}

TEST_F(FignerPrintTest, TroubleEndsThePollingAndIsTold)
{
    const auto isOver = [&](const char* status, bool isNoted, int polls) {
        EXPECT_TRUE(closes());
        QCoreApplication::processEvents(); // what was told before
        EXPECT_TRUE(QTest::qWaitFor([&] { return text("labelNote").isEmpty() != isNoted; }));
        EXPECT_EQ(this->status(), QLatin1String(status));
        EXPECT_EQ(sensor_.polls.exchange(0), polls);
    };
    sensor_.verifies = ZAZ_NO_SENSOR;
    testing::internal::CaptureStdout();
    capture();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "open fp dev failed(usb)!\n");
    isOver("Open FP device failed", false, 0);

    // A sensor that does not open is not asked for its password, and polled all the same.
    sensor_.opens = ZAZ_NO_MEMORY;
    sensor_.finger = [](int poll) { return poll < 3 ? ZAZ_NO_FINGER : ZAZ_LOST; };
    capture();
    isOver("Please put your finger on it", true, 3);
    EXPECT_EQ(sensor_.polledHandle, 0);

    sensor_.opens = sensor_.verifies = ZAZ_OK;
    sensor_.finger = [](int) { return ZAZ_TAKEN_OVER; };
    capture();
    isOver("Please put your finger on it", false, 1);
    sensor_.finger = [](int) { return ZAZ_OK; };
    sensor_.uploads = ZAZ_NO_PICTURE;
    capture();
    isOver("Please put your finger on it", true, 1);
    sensor_.uploads = ZAZ_OK;
    sensor_.writes = ZAZ_IO_ERROR;
    capture();
    isOver("Please put your finger on it", true, 1);
    EXPECT_EQ(folder_.names(), std::vector<std::string>());

    sensor_.writes = ZAZ_OK;
    settings::setSavePath(settings, path() + QStringLiteral("/stick/prints"));
    dialog_ = std::make_unique<FignerPrint>(nullptr, nullptr);
    dialog_->show();
    capture();
    isOver("Please put your finger on it", true, 1);
    EXPECT_TRUE(text("labelNote").contains(path() + QStringLiteral("/stick/prints")));
    ASSERT_TRUE(QDir(path()).mkdir(QStringLiteral("stick"))); // plugged in
    capture();
    EXPECT_TRUE(says("Get FP data Success"));
    EXPECT_EQ(QDir(path() + QStringLiteral("/stick/prints")).entryList(QDir::Files).size(), 1);
}

TEST_F(FignerPrintTest, NoWorkerOutlivesWhatItUses)
{
    capture();
    capture(); // beside the first
    ASSERT_TRUE(QTest::qWaitFor([&] { return sensor_.polls > 4; }));
    dialog_.reset();
    EXPECT_EQ(sensor_.closed, 2) << "the end of the dialog waits for its workers";

    // One that hangs in its driver is left alone.
    const std::shared_ptr<std::atomic<bool>> isHanging = std::make_shared<std::atomic<bool>>(true);
    sensor_.finger = [isHanging](int) {
        while (*isHanging)
            std::this_thread::yield();
        return ZAZ_OK;
    };
    sensor_.polls = 0;
    dialog_ = std::make_unique<FignerPrint>(nullptr, nullptr);
    workers_ = 3;
    dialog_->GetFPFromDev(path() + QStringLiteral("/late.bmp"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return sensor_.polls > 0; }));
    dialog_.reset();
    EXPECT_EQ(sensor_.closed, 2);
    *isHanging = false;
    EXPECT_TRUE(closes());
}

} // namespace

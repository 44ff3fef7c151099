#include "CaptureProcessor.h"

#include "DiskFullAt.h"
#include "FrameHandle.h"
#include "FreshSettings.h"
#include "SavePicture.h"
#include "Settings.h"
#include "TempDir.h"
#include "TestImage.h"
#include "mirvakcamera.h"

#include <QDir>
#include <QImage>

#include <future>
#include <vector>

namespace {

class CaptureProcessorTest : public FreshSettings
{
protected:
    CaptureProcessorTest() { settings::setSavePath(settings, QString::fromStdString(folder_.path())); }
    FrameHandle frame(int width = 320, int height = 240)
    {
        return ownImage(camera_, makeImageHandle(width, height, {250, 250, 250}));
    }
    QStringList files() const { return QDir(QString::fromStdString(folder_.path())).entryList(QDir::Files); }

    TempDir folder_;
    MirvakCamera camera_;
    CaptureProcessor processor_{camera_};
};

TEST_F(CaptureProcessorTest,
       EveryFormatIsReadableCarriesTheCamerasResolutionAndPicturesAreOnlySavedInTheirModes)
{
    for (int format = 0; format < 3; ++format) {
        settings::imageFormat.write(settings, format);
        const QString path = processor_.imageSave(frame().get(), cropping::none, 0);
        const QImage saved(path);
        EXPECT_EQ(saved.size(), QSize(320, 240)) << path.toStdString();
        EXPECT_NEAR(saved.dotsPerMeterX(), 8464, 20) << path.toStdString(); // JPEG stores whole dots per inch
        EXPECT_EQ(saved.dotsPerMeterY(), saved.dotsPerMeterX()) << path.toStdString();
    }

    QImage picture(200, 100, QImage::Format_RGB888);
    picture.fill(Qt::blue);
    EXPECT_EQ(processor_.imageSave(picture, 2), QString());
    EXPECT_EQ(processor_.imageSave(QImage(), 0), QString());
    EXPECT_EQ(files().size(), 3);
    for (const int mode : {0, 1, 3})
        EXPECT_EQ(QImage(processor_.imageSave(picture, mode)).size(), QSize(200, 100)) << mode;
}

TEST_F(CaptureProcessorTest, APictureIsSavedInTheFormatThatIsAskedForOrNotAtAll)
{
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    const QString path = QString::fromStdString(folder_.file("a.xyz"));
    EXPECT_EQ(savePicture(picture, path), QString()) << "no format has that name";
    EXPECT_EQ(savePicture(QImage(), path, "PNG"), QString());
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(savePicture(picture, path, "PNG"), path);
    const QImage saved(path);
    EXPECT_EQ(saved.pixel(19, 9), picture.pixel(19, 9));
    EXPECT_EQ(QSize(saved.dotsPerMeterX(), saved.dotsPerMeterY()), QSize(8464, 8464));
}

TEST_F(CaptureProcessorTest, FailuresGiveAnEmptyPathAndLeaveNothing)
{
    EXPECT_EQ(processor_.imageSave(nullptr, 0, 0), QString());
    settings::setSavePath(settings, QString::fromStdString(folder_.file("a/b")));
    EXPECT_EQ(processor_.imageSave(frame().get(), 0, 0), QString());
    settings::setSavePath(settings, QString::fromStdString(folder_.write("file", "no folder")));
    EXPECT_EQ(processor_.imageSave(frame().get(), 0, 0), QString());
    settings::setSavePath(settings, QString::fromStdString(folder_.path()));
    settings::imageFormat.write(settings, 2);
    {
        const DiskFullAt limit(1000);
        EXPECT_EQ(processor_.imageSave(frame().get(), 0, 0), QString());
        EXPECT_EQ(processor_.imageSave(QImage(200, 100, QImage::Format_RGB888), 0), QString());
    }
    EXPECT_EQ(QDir(QString::fromStdString(folder_.path())).entryList(QDir::Files | QDir::Hidden),
              QStringList(QStringLiteral("file")));
}

// Several programs in one folder know nothing of each other until a name is taken.
TEST_F(CaptureProcessorTest, NoCaptureEverReplacesAnother)
{
    for (const int rule : {0, 1}) {
        settings::namingRules.write(settings, rule);
        std::vector<std::future<bool>> results;
        for (int i = 1; i <= 8; ++i) {
            results.push_back(std::async(std::launch::async, [this, i] {
                CaptureProcessor processor(camera_);
                bool isOwn = true;
                for (int width = i * 10; width < i * 10 + 5; ++width) {
                    const QString first = processor.imageSave(frame(width).get(), cropping::none, 0);
                    const QString second = processor.imageSave(QImage(width, 7, QImage::Format_RGB888), 0);
                    isOwn = isOwn && QImage(first).size() == QSize(width, 240) &&
                            QImage(second).size() == QSize(width, 7);
                }
                return isOwn;
            }));
        }
        for (auto& result : results)
            EXPECT_TRUE(result.get()) << rule;
        EXPECT_EQ(files().size(), 80 * (rule + 1));
    }
}

TEST_F(CaptureProcessorTest, EveryCaptureIsAFileOfItsOwnWhateverTheNames)
{
    folder_.write("IMAGE_2147483646.jpg", "");
    for (const char* prefix : {"IMAGE", ".x", "my_scan", ""}) {
        settings::namingPrefix.write(settings, QString::fromLatin1(prefix));
        const int before = int(files().size());
        for (int i = 0; i < 3; ++i)
            EXPECT_FALSE(processor_.imageSave(frame().get(), cropping::none, 0).isEmpty());
        EXPECT_EQ(files().size(), before + 3) << prefix;
    }
}

} // namespace

#include "RecordControl.h"

#include "Dialogs.h"
#include "FakeDesk.h"
#include "Settings.h"
#include "TempDir.h"
#include "VideoRecord.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include <thread>

namespace {

class RecordControlTest : public ::testing::Test
{
protected:
    RecordControlTest()
    {
        settings::setSavePath(store, folder());
        Dialogs::instance().ask = [this](QMessageBox& box) {
            asked << box.windowTitle() << box.text() << box.informativeText();
            return answer;
        };
        Dialogs::instance().information =
            [this](QWidget*, const QString& title, const QString& text, QMessageBox::StandardButtons) {
                informed << title << text;
                return QMessageBox::Ok;
            };
        Dialogs::instance().openUrl = [this](const QUrl& url) {
            opened << url.toLocalFile();
            return true;
        };
    }
    ~RecordControlTest() override
    {
        Dialogs::instance() = Dialogs::real();
        store.GetSettings()->clear();
    }

    /// Without a device the text says the size.
    void start(const QString& resolution = QStringLiteral("320 * 240"), int rotation = 0)
    {
        control.start({nullptr, 0, resolution, rotation});
    }
    void deliver(int width = 320, int height = 240, int count = 1)
    {
        std::thread capture([&] {
            const FrameHandle frame = ownImage(desk.camera, makeImageHandle(width, height, {10, 200, 30}));
            for (int i = 0; i < count; ++i)
                control.record(frame.get());
        });
        capture.join();
    }
    void pressStop()
    {
        QTest::mouseClick(box()->findChild<QPushButton*>(QStringLiteral("ButtonStop")), Qt::LeftButton);
    }
    VideoRecord* box() const { return window.findChild<VideoRecord*>(); }
    QString shownTime() const { return box()->findChild<QLabel*>(QStringLiteral("labelTime"))->text(); }
    QString folder() const { return QString::fromStdString(temp.file("videos")); }
    QStringList files() const { return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    TempDir temp;
    ConfigSettings store;
    FakeDesk desk;
    QWidget window;
    QStringList asked, informed, opened;
    QMessageBox::StandardButton answer = QMessageBox::Ok;
    RecordControl control{desk, desk.camera, window};
};

TEST_F(RecordControlTest, StopLeavesAListedFileAndOffersItsFolder)
{
    answer = QMessageBox::Open;
    start();
    ASSERT_TRUE(box() && box()->isVisible());
    deliver();
    pressStop();
    EXPECT_FALSE(control.isRecording());
    EXPECT_FALSE(box()->isVisible());
    ASSERT_EQ(files().size(), 1);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9]{14}\\.mp4$")).match(files().first()).hasMatch());
    EXPECT_EQ(desk.documents, QStringList{folder() + QLatin1Char('/') + files().first()});
    EXPECT_FALSE(desk.documentIcons.first().isNull());
    EXPECT_EQ(asked,
              (QStringList{QStringLiteral("Tip"),
                           QStringLiteral("Record finished"),
                           QStringLiteral("Do you want to open the video directory?")}));
    EXPECT_EQ(opened, QStringList{folder()});
    deliver(); // late frames do no harm
    const VideoRecord* first = box();
    start();
    EXPECT_EQ(box(), first) << "kept";
    EXPECT_TRUE(control.isRecording());
}

TEST_F(RecordControlTest, NothingStartsWithoutLeaveFolderOrAFittingSize)
{
    desk.allowed = false;
    start();
    desk.allowed = true;
    start(QStringLiteral("1601 * 1200"));
    EXPECT_EQ(informed.size(), 2);
    EXPECT_EQ(informed.last(),
              QStringLiteral("Recording stopped, please adjust the resolution to 1600 * 1200"));
    settings::setSavePath(store, QStringLiteral("/proc/none/here"));
    start();
    EXPECT_FALSE(control.isRecording());
    EXPECT_TRUE(!box() || !box()->isVisible());
    settings::setSavePath(store, folder());
    start(QString()); // stands for 1600 * 1200
    EXPECT_TRUE(control.isRecording());
    EXPECT_EQ(informed.size(), 2);
}

TEST_F(RecordControlTest, ATurnedViewIsRecordedTurnedAndFramesOfOtherSizesAreLeftOut)
{
    start(QStringLiteral("320 * 240"), 1);
    deliver(320, 240);
    deliver(100, 100);
    pressStop();
    EXPECT_TRUE(desk.documents.isEmpty()) << "no frame fitted, so there is no film";
    EXPECT_FALSE(desk.notices.isEmpty());
    EXPECT_TRUE(files().isEmpty());
    start(QStringLiteral("320 * 240"), 3);
    deliver(240, 320);
    pressStop();
    EXPECT_EQ(desk.documents.size(), 1);
}

TEST_F(RecordControlTest, ClosingTheWindowKeepsTheRecordingAndTheButtonShowsItAgain)
{
    start();
    deliver();
    box()->onTimeout();
    EXPECT_EQ(shownTime(), QStringLiteral("Recording video: 1s"));
    box()->close();
    EXPECT_TRUE(control.isRecording());
    EXPECT_EQ(desk.notices.size(), 1) << "it says that it goes on";
    EXPECT_EQ(shownTime(), QStringLiteral("Recording video: 0s"));
    start();
    EXPECT_TRUE(box()->isVisible());
    EXPECT_EQ(files().size(), 1) << "no second recording";
    pressStop();
    EXPECT_EQ(desk.documents.size(), 1);
    EXPECT_EQ(desk.notices.size(), 1);
}

TEST_F(RecordControlTest, TheEndOfTheProgramCompletesTheFile)
{
    start();
    deliver();
    control.finish();
    EXPECT_FALSE(control.isRecording());
    EXPECT_TRUE(asked.isEmpty());
    ASSERT_EQ(files().size(), 1);
    QFile file(folder() + QLatin1Char('/') + files().first());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.read(8).mid(4), "ftyp");
}

TEST_F(RecordControlTest, TheWindowStandsInTheCornerOfItsParentAndStartsAtZero)
{
    window.setGeometry(40, 60, 900, 700);
    start();
    EXPECT_EQ(shownTime(), QStringLiteral("Recording video: 0s"));
    EXPECT_EQ(box()->pos(), QPoint(window.x() + 900 - box()->width(), window.y() + 700 - box()->height()));
    EXPECT_GE(box()->width(), 400);
    EXPECT_GE(box()->height(), 150);
}

} // namespace

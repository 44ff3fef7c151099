#include "RecordControl.h"

#include "../record/Trouble.h"
#include "Command.h"
#include "Dialogs.h"
#include "DiskFullAt.h"
#include "OutputFixture.h"
#include "Part.h"
#include "VideoRecord.h"

#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

#include <array>
#include <future>
#include <thread>

namespace {

class RecordControlTest : public OutputTest
{
protected:
    RecordControlTest()
    {
        settings::setSavePath(settings, videos());
        Dialogs::instance().ask = [this](QMessageBox& box) {
            asked << box.windowTitle() << box.text() << box.informativeText();
            EXPECT_TRUE(!box.button(QMessageBox::Open) ||
                        box.defaultButton() == box.button(QMessageBox::Ok)); // Enter opens nothing
            return answer;
        };
        Dialogs::instance().openUrl = [this](const QUrl& url) {
            opened << url.toLocalFile();
            return true;
        };
    }
    ~RecordControlTest() override { Dialogs::instance() = Dialogs::real(); }

    /// Without a device the text says the size.
    void start(const QString& resolution = QStringLiteral("320 * 240"), int rotation = 0)
    {
        control.start({nullptr, 0, resolution, rotation});
    }
    void deliver(int width = 320, int height = 240, int count = 1)
    {
        std::thread capture([&] {
            const FrameHandle frame = ownImage(desk.camera, makeImageHandle(width, height, {10, 200, 30}));
            if (isNoise)
                cv::RNG(++noise).fill(
                    static_cast<mirvak::Image*>(frame.get())->pixels, cv::RNG::UNIFORM, 0, 255);
            for (int i = 0; i < count; ++i)
                control.record(frame.get());
        });
        capture.join();
    }
    void pressStop() { QTest::mouseClick(part<QPushButton>(*box(), "ButtonStop"), Qt::LeftButton); }
    VideoRecord* box() const { return window.findChild<VideoRecord*>(); }
    QString note() const { return box()->findChild<QLabel*>(QStringLiteral("labelNote"))->text(); }
    QString shownTime() const { return box()->findChild<QLabel*>(QStringLiteral("labelTime"))->text(); }
    QString videos() const { return path("videos"); }
    QString film(int number = 0) const { return videos() + QLatin1Char('/') + files().at(number); }
    /// Milliseconds that another program finds in the film; 0 when it finds a fault.
    int lengthOf(const QString& path) const
    {
        const std::string file = path.toStdString();
        const std::string faults = tools::run("ffmpeg -v warning -nostdin -i '" + file + "' -f null -");
        const std::string seconds =
            tools::run("ffprobe -v error -show_entries format=duration -of csv=p=0 '" + file + "'");
        EXPECT_EQ(faults, "");
        return faults.empty() ? qRound(1000 * QString::fromStdString(seconds).toDouble()) : 0;
    }
    /// Of the film's last picture, at this point, red first.
    std::array<int, 3> colourAt(const QString& path, int x, int y) const
    {
        const std::string pixels =
            tools::run("ffmpeg -v error -nostdin -i '" + path.toStdString() +
                       "' -vf reverse,crop=2:2:" + std::to_string(x) + ":" + std::to_string(y) +
                       " -frames:v 1 -f rawvideo -pix_fmt rgb24 -");
        const auto byte = [&](size_t at) { return at < pixels.size() ? int(uint8_t(pixels[at])) : -1; };
        return {byte(0), byte(1), byte(2)};
    }
    /// One, on a busy machine perhaps more.
    bool filmSeconds(int width = 320, int height = 240)
    {
        return QTest::qWaitFor(
            [=] {
                deliver(width, height);
                return shownTime() != QStringLiteral("Recording video: 0s");
            },
            60000);
    }
    /// Until the recording ends by itself.
    void filmToTheEnd()
    {
        EXPECT_TRUE(QTest::qWaitFor(
            [this] {
                deliver();
                return !control.isRecording();
            },
            60000));
    }
    /// What the user finds after a recording that ended by itself with a film.
    void expectEndedWith(const char* why)
    {
        EXPECT_FALSE(control.isRecording());
        EXPECT_TRUE(note().startsWith(QLatin1String(why))) << qPrintable(note());
        EXPECT_EQ(desk.notices.last(), note());
        ASSERT_EQ(desk.documents.size(), 1);
        const int milliseconds = lengthOf(desk.documents.first());
        EXPECT_GT(milliseconds, 0);
        const QString shown = QStringLiteral("Recorded: %1s").arg(qRound(milliseconds / 1000.0));
        EXPECT_EQ(shownTime(), shown);
        EXPECT_FALSE(box()->findChild<QTimer*>()->isActive()) << "it counts no further";
        pressStop();
        EXPECT_FALSE(box()->isVisible());
        EXPECT_TRUE(asked.isEmpty()) << "it is no finished recording";
        EXPECT_EQ(desk.documents.size(), 1);
    }

    QStringList files() const { return QDir(videos()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    QWidget window;
    QStringList asked, opened;
    bool isNoise = false;
    uint64_t noise = 0;
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
    EXPECT_EQ(desk.documents, QStringList{videos() + QLatin1Char('/') + files().first()});
    EXPECT_FALSE(desk.documentIcons.first().isNull());
    EXPECT_EQ(asked,
              (QStringList{QStringLiteral("Tip"),
                           QStringLiteral("Record finished"),
                           QStringLiteral("Do you want to open the video directory?")}));
    EXPECT_EQ(opened, QStringList{videos()});
    deliver(); // late frames do no harm
    EXPECT_GT(lengthOf(film()), 0);
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
    EXPECT_EQ(asked.value(0), QStringLiteral("Tips"));
    EXPECT_EQ(asked.value(1),
              QStringLiteral("Recording stopped, please adjust the resolution to 1600 * 1200"));
    EXPECT_TRUE(asked.value(2).contains(QStringLiteral("too large for a film")));
    EXPECT_TRUE(desk.notices.isEmpty());
    settings::setSavePath(settings, QStringLiteral("/proc/none/here"));
    start();
    EXPECT_TRUE(desk.notices.value(0).contains(QStringLiteral("/proc/none/here")));
    EXPECT_FALSE(control.isRecording());
    EXPECT_TRUE(!box() || !box()->isVisible());
    settings::setSavePath(settings, videos());
    start(QString()); // stands for 1600 * 1200
    EXPECT_TRUE(control.isRecording());
    EXPECT_EQ(asked.size(), 3);
}

TEST_F(RecordControlTest, FollowsAStreamThatIsTurnedOrGetsAnotherSize)
{
    start(QStringLiteral("320 * 240"), 1);
    deliver(240, 320);
    pressStop();
    EXPECT_EQ(colourAt(film(), 4, 4)[1] > 150, true) << "a turned film, full";
    start(QStringLiteral("320 * 240"), 0);
    deliver(320, 240);
    EXPECT_TRUE(filmSeconds(240, 320));
    pressStop();
    ASSERT_EQ(desk.documents.size(), 2);
    const QString second = desk.documents.last();
    EXPECT_GT(colourAt(second, 160, 120)[1], 150);
    EXPECT_LT(colourAt(second, 10, 120)[1], 30) << "black beside the upright picture";
    EXPECT_TRUE(desk.notices.isEmpty());
}

TEST_F(RecordControlTest, NeverReplacesAFile)
{
    QDir().mkpath(videos());
    const QDateTime now = QDateTime::currentDateTime();
    for (int second = 0; second < 60; ++second) {
        const QString stamp = now.addSecs(second).toString(QStringLiteral("yyyyMMddhhmmss"));
        ASSERT_TRUE(QFile::link(QStringLiteral("/nowhere"), videos() + QStringLiteral("/%1.mp4").arg(stamp)));
    }
    for (int count = 1; count <= 2; ++count) {
        start();
        deliver();
        pressStop();
        ASSERT_EQ(desk.documents.size(), count);
        EXPECT_GT(lengthOf(desk.documents.last()), 0);
    }
    EXPECT_NE(desk.documents[0], desk.documents[1]);
}

TEST_F(RecordControlTest, ClosingTheWindowKeepsTheRecordingAndTheButtonShowsItAgainAlsoWithoutACamera)
{
    start();
    EXPECT_TRUE(filmSeconds());
    box()->close();
    EXPECT_TRUE(control.isRecording());
    EXPECT_EQ(desk.notices.size(), 1) << "it says that it goes on";
    EXPECT_EQ(shownTime(), QStringLiteral("Recording video: 0s"));
    desk.allowed = false;
    start();
    EXPECT_TRUE(box()->isVisible());
    EXPECT_NE(shownTime(), QStringLiteral("Recording video: 0s"));
    EXPECT_EQ(files().size(), 1) << "no second recording";
    pressStop();
    EXPECT_EQ(desk.documents.size(), 1);
    EXPECT_EQ(desk.notices.size(), 1);
}

TEST_F(RecordControlTest, AFullDiskIsToldAndCostsNoLaterFilm)
{
    isNoise = true;
    {
        start();
        const DiskFullAt limit(2'000'000);
        filmToTheEnd();
    }
    expectEndedWith("The disk is full");
    EXPECT_EQ(desk.notices.size(), 1);
    start();
    EXPECT_EQ(note(), QString());
    deliver(320, 240, 3);
    pressStop();
    ASSERT_EQ(desk.documents.size(), 2);
    EXPECT_GT(lengthOf(desk.documents.last()), 0);
}

TEST_F(RecordControlTest, AnEncoderThatFailsIsTold)
{
    const Trouble trouble;
    Trouble::onEncode = [left = 52]() mutable { return left-- > 0; }; // 1.6 s, which are two
    start();
    filmToTheEnd();
    expectEndedWith("The video encoder failed");
    const auto* button = part<QPushButton>(*box(), "ButtonStop");
    EXPECT_EQ(button->text(), QStringLiteral("Close")) << "there is nothing to stop";
    EXPECT_EQ(desk.notices.size(), 1) << "taken for a silent camera at first";
    Trouble::onEncode = [] { return false; };
    start();
    EXPECT_EQ(button->text(), QStringLiteral("Stop"));
    deliver();
    pressStop();
    EXPECT_TRUE(asked.isEmpty()) << "nothing is finished";
    EXPECT_EQ(note(), QStringLiteral("The video could not be recorded."));
    EXPECT_TRUE(box()->isVisible());
    EXPECT_EQ(desk.documents.size(), 1);
}

TEST_F(RecordControlTest, TheEndOfALongFilmIsShownAndCanBeGivenUp)
{
    const Trouble trouble;
    std::promise<void> disk;
    Trouble::onSync = [answers = disk.get_future().share()] { answers.wait(); };
    start();
    deliver();
    pressStop();
    EXPECT_EQ(desk.jobs.size(), 1);
    ASSERT_FALSE(desk.job.expired());
    EXPECT_EQ(desk.documents.size(), 1) << "it is listed and plays meanwhile";
    EXPECT_TRUE(QTest::qWaitFor([&] { return desk.jobProgress() > 0.5; }));
    desk.cancelJob();
    QTest::qWait(600); // the copy hears of it
    disk.set_value();
    ASSERT_TRUE(QTest::qWaitFor([&] { return desk.job.expired(); }));
    EXPECT_FALSE(desk.notices.isEmpty()) << "the end is told";
    EXPECT_GT(lengthOf(desk.documents[0]), 0) << "it plays as it is";
    EXPECT_NE(TempDir::contentOf(film().toStdString()).find("moof"), std::string::npos) << "in fragments";
    EXPECT_EQ(files().size(), 1) << "nothing of the copy";
}

TEST_F(RecordControlTest, ACameraThatIsAwayIsToldAndWaitedForAWhile)
{
    start();
    deliver();
    const auto ticks = [this](int count) {
        for (int i = 0; i < count && control.isRecording(); ++i)
            control.watch();
    };
    ticks(5);
    EXPECT_EQ(note(), QString()) << "a slow camera";
    ticks(5);
    EXPECT_TRUE(note().startsWith(QLatin1String("The camera delivers no picture;"))) << qPrintable(note());
    ticks(20);
    EXPECT_EQ(desk.notices, QStringList{note()});
    deliver();
    ticks(30);
    EXPECT_TRUE(control.isRecording()) << "it came back in between";
    deliver();
    ticks(1);
    EXPECT_EQ(note(), QString());
    ticks(60);
    expectEndedWith("The camera delivers no picture. The recording has ended");
    start();
    ticks(5);
    EXPECT_TRUE(control.isRecording()) << "the silence before counts no more";
    ticks(60);
    EXPECT_FALSE(control.isRecording());
    EXPECT_EQ(note(), QStringLiteral("Nothing was recorded: the camera delivered no picture."));
}

TEST_F(RecordControlTest, TheWindowStandsInTheCornerOfItsParentAndItsEndCompletesTheFile)
{
    window.setGeometry(40, 60, 900, 700);
    start();
    EXPECT_EQ(shownTime(), QStringLiteral("Recording video: 0s"));
    EXPECT_EQ(box()->pos(), QPoint(window.x() + 900 - box()->width(), window.y() + 700 - box()->height()));
    EXPECT_TRUE(box()->width() >= 400 && box()->height() >= 150);
    deliver();
    control.finish();
    EXPECT_FALSE(control.isRecording());
    EXPECT_TRUE(asked.isEmpty());
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(TempDir::contentOf(film().toStdString()).substr(4, 4), "ftyp");
}

} // namespace

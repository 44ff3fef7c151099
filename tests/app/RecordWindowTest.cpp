// Films, as the window's user meets them.
#include "WindowFixture.h"

#include "RecordingMark.h"
#include "VideoRecord.h"

#include <QtEndian>

#include <random>

namespace {

class RecordWindowTest : public LumroScannerTest
{
protected:
    RecordWindowTest()
    {
        Dialogs::instance().ask = [this](QMessageBox& box) {
            messages_ << box.text();
            return box.button(QMessageBox::Apply) ? QMessageBox::Apply : QMessageBox::Ok;
        };
    }
    VideoRecord* box() const { return window_->findChild<VideoRecord*>(); }
    void pressStop() const
    {
        if (box() && box()->isVisible())
            QTest::mouseClick(box()->findChild<QPushButton*>(QStringLiteral("ButtonStop")), Qt::LeftButton);
    }
    /// The names of the file's boxes; empty when one is cut off.
    QStringList boxesOf(const QString& name) const
    {
        QFile file(pictures() + QLatin1Char('/') + name);
        file.open(QIODevice::ReadOnly);
        QStringList names;
        while (!file.atEnd()) {
            const QByteArray head = file.read(8);
            const qint64 size = head.size() == 8 ? qFromBigEndian<quint32>(head.constData()) : 0;
            if (size < 8 || !file.seek(file.pos() + size - 8) || file.pos() > file.size())
                return {};
            names << QString::fromLatin1(head.mid(4));
        }
        return names;
    }
};

TEST_F(RecordWindowTest, TheVideoButtonFilmsUntilItIsStopped)
{
    ASSERT_TRUE(shows(camera()));
    click("btnRecord");
    ASSERT_TRUE(box() && box()->isVisible());
    const auto* time = box()->findChild<QLabel*>(QStringLiteral("labelTime"));
    EXPECT_TRUE(QTest::qWaitFor([=] { return !time->text().endsWith(QStringLiteral(" 0s")); }, 60000));
    pressStop();
    ASSERT_EQ(files().size(), 1);
    const QStringList boxes = boxesOf(files().first());
    EXPECT_LT(boxes.indexOf(QStringLiteral("moov")), boxes.indexOf(QStringLiteral("mdat")))
        << "starts at once";
    EXPECT_TRUE(boxes.contains(QStringLiteral("moov")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 1; }));
    window_->setMergePending(true);
    click("btnRecord");
    EXPECT_FALSE(box()->isVisible());
    EXPECT_EQ(files().size(), 1);
}

TEST_F(RecordWindowTest, ARecordingWhoseWindowWasClosedIsStoppedWhenTheCameraIsGone)
{
    ASSERT_TRUE(shows(camera("unplug_after = 2.0;")));
    click("btnRecord");
    ASSERT_TRUE(box() && box()->isVisible());
    box()->close();
    const auto* mark = window_->findChild<RecordingMark*>();
    ASSERT_TRUE(mark->isVisible());
    EXPECT_EQ(mark->geometry().topRight(), QPoint(view().width() - 11, 54)) << "below the tools";
    const auto look = [=] { return const_cast<RecordingMark*>(mark)->grab().toImage(); };
    const QImage first = look();
    EXPECT_TRUE(QTest::qWaitFor([&] { return look() != first; }, 60000)) << "it counts";
    const_cast<RecordingMark*>(mark)->showLength(3725);
    EXPECT_EQ(mark->accessibleName(), QStringLiteral("Recording, 62:05"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !hasPicture(); }, 60000));
    EXPECT_TRUE(mark->isVisible()) << "the film is still being made";
    click("btnRecord");
    ASSERT_TRUE(box()->isVisible());
    pressStop();
    EXPECT_FALSE(mark->isVisible());
    ASSERT_EQ(files().size(), 1);
    EXPECT_TRUE(boxesOf(files().first()).contains(QStringLiteral("moov")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 1; }));
}

TEST_F(RecordWindowTest, ATooLargePictureIsRefusedWithAWayOut)
{
    std::string large = camera();
    large.replace(large.find("640x480"), 7, "2048x1536\", \"160x120\", \"640x480");
    ASSERT_TRUE(shows(large));
    click("btnRecord");
    EXPECT_EQ(messages_,
              QStringList(QStringLiteral("Recording stopped, please adjust the resolution to 1600 * 1200")));
    EXPECT_EQ(view().GetResolutionCurrentIndex(), 2) << "the largest of those that fit";
    ASSERT_TRUE(box() && box()->isVisible()) << "the film begins in that size";
    pressStop();
}

TEST_F(RecordWindowTest, EveryOrderOfStartStopTurnResizeUnplugAndCloseLeavesWholeFiles)
{
    for (unsigned seed = 1; seed <= 5; ++seed) {
        std::mt19937 random(seed);
        const auto pick = [&](int count) {
            return static_cast<int>(random() % static_cast<unsigned>(count));
        };
        ASSERT_TRUE(shows(camera("unplug_after = " + std::to_string(0.3 + 0.2 * pick(5)) + ";")));
        for (int step = 0; step < 8; ++step) {
            switch (pick(6)) {
            case 0:
            case 1:
                window_->onRecord();
                break;
            case 2:
                pressStop();
                break;
            case 3:
                window_->onRotateChanged(pick(4));
                break;
            case 4:
                window_->onResolutionChanged(pick(2));
                break;
            default:
                if (box())
                    box()->close();
            }
            QTest::qWait(pick(150));
        }
        window_->close();
        window_.reset();
        for (const QString& file : files())
            EXPECT_TRUE(boxesOf(file).contains(QStringLiteral("moov")))
                << qPrintable(file) << ", order " << seed;
    }
}

} // namespace

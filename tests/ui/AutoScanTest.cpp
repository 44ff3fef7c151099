#include "AutoScan.h"
#include "Part.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace {

class AutoScanTest : public ::testing::Test
{
protected:
    AutoScanTest()
    {
        window.setGeometry(20, 10, 760, 580);
        dialog.SetTitleName(QStringLiteral("Timer Scan"));
        dialog.show();
    }
    template <class Control> Control* part(const char* name) const { return ::part<Control>(dialog, name); }
    QString text(const char* label) const { return part<QLabel>(label)->text(); }
    QString shownCount() const
    {
        const bool isTimerScan = part<QWidget>("panelTimer")->isVisibleTo(&dialog);
        return text(isTimerScan ? "labelTimerCount" : "labelPageCount");
    }
    QList<QTimer*> runningTimers() const
    {
        QList<QTimer*> running;
        for (QTimer* timer : dialog.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly))
            if (timer->isActive())
                running << timer;
        return running;
    }

    QWidget window;
    AutoScan dialog{&window};
    QSignalSpy ready{&dialog, &AutoScan::timerScanReady};
    QSignalSpy stopped{&dialog, &AutoScan::autoscanStop};
};

} // namespace

TEST_F(AutoScanTest, CountsDownToEachPicture)
{
    dialog.SetTimerScan(2);
    EXPECT_TRUE(part<QWidget>("panelTimer")->isVisible());
    EXPECT_FALSE(part<QWidget>("panelAutoPage")->isVisible());
    const auto* bar = part<QProgressBar>("progress");
    EXPECT_EQ(bar->maximum(), 2);
    QStringList seen;
    // Two intervals, each change noted: seconds left, seconds gone, pictures taken.
    const bool wentOn = QTest::qWaitFor(
        [&] {
            const QString now = QStringLiteral("%1/%2/%3")
                                    .arg(text("labelCountdown"), QString::number(bar->value()), shownCount());
            if (seen.isEmpty() || seen.last() != now)
                seen << now;
            return shownCount() == QStringLiteral("2");
        },
        8000);
    EXPECT_TRUE(wentOn);
    EXPECT_EQ(ready.count(), 2);
    for (const char* state : {"2/0/0", "1/1/0", "2/0/1", "1/1/1", "2/0/2"})
        EXPECT_TRUE(seen.contains(QLatin1String(state)))
            << state << " in " << qPrintable(seen.join(QLatin1Char(' ')));
    EXPECT_TRUE(seen.filter(QRegularExpression(QStringLiteral("^0|/2/"))).isEmpty())
        << "it starts anew where nothing would be left";
}

TEST_F(AutoScanTest, KeepsToTheIntervalsThatMakeSense)
{
    const std::pair<int, int> cases[] = {
        {0, 1}, {-7, 1}, {1, 1}, {5, 5}, {30, 30}, {31, 30}, {2147483647, 30}};
    for (const auto& [given, taken] : cases) {
        dialog.SetTimerScan(given);
        EXPECT_EQ(part<QProgressBar>("progress")->maximum(), taken) << given;
        EXPECT_EQ(text("labelCountdown"), QString::number(taken)) << given;
        QList<int> intervals;
        for (const QTimer* timer : runningTimers())
            intervals << timer->interval();
        std::sort(intervals.begin(), intervals.end());
        EXPECT_EQ(intervals, (QList<int>{1000, taken * 1000})) << given;
    }
}

TEST_F(AutoScanTest, CountsTheReportedPages)
{
    dialog.SetTimerScan(1);
    dialog.SetAutopageScan();
    EXPECT_TRUE(runningTimers().isEmpty()) << "the clock of the other mode has stopped";
    EXPECT_FALSE(part<QWidget>("panelTimer")->isVisible());
    EXPECT_TRUE(part<QWidget>("panelAutoPage")->isVisible());
    auto* bar = part<QProgressBar>("progress");
    EXPECT_EQ(std::make_pair(bar->minimum(), bar->maximum()), std::make_pair(0, 0));
    EXPECT_TRUE(bar->isVisible());
    const QImage first = bar->grab().toImage();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar->grab().toImage() != first; }, 3000))
        << "it is seen to work";
    EXPECT_EQ(shownCount(), QStringLiteral("0"));
    dialog.SetAutoPageNum();
    dialog.SetAutoPageNum();
    EXPECT_EQ(shownCount(), QStringLiteral("2"));
    EXPECT_EQ(ready.count(), 0);
}

TEST_F(AutoScanTest, EveryWayOutIsStopAlsoThatOfTheCaptureItAsksFor)
{
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"the button", [&] { QTest::mouseClick(part<QPushButton>("buttonStop"), Qt::LeftButton); }},
        {"Enter", [&] { QTest::keyClick(&dialog, Qt::Key_Return); }},
        {"Escape", [&] { QTest::keyClick(&dialog, Qt::Key_Escape); }},
        {"the title bar", [&] { QTest::mouseClick(part<QPushButton>("buttonClose"), Qt::LeftButton); }},
        {"the window manager", [&] { dialog.close(); }}};
    for (const auto& [name, leave] : ways) {
        dialog.show();
        dialog.SetTimerScan(1);
        dialog.SetAutoPageNum();
        leave();
        EXPECT_FALSE(dialog.isVisible()) << name;
        EXPECT_EQ(stopped.count(), 1) << name;
        EXPECT_TRUE(runningTimers().isEmpty()) << name;
        EXPECT_EQ(shownCount(), QStringLiteral("0")) << name;
        stopped.clear();
    }
    dialog.show();
    dialog.SetTimerScan(1);
    dialog.hide();
    EXPECT_TRUE(runningTimers().isEmpty()) << "nothing is taken unseen";
    EXPECT_EQ(stopped.count(), 0) << "that was not the user";

    dialog.show();
    QObject::connect(&dialog, &AutoScan::timerScanReady, &dialog, [&] { dialog.reject(); });
    dialog.SetTimerScan(1);
    ASSERT_TRUE(stopped.wait(4000));
    EXPECT_EQ(shownCount(), QStringLiteral("0"));
    EXPECT_TRUE(runningTimers().isEmpty());
}

TEST_F(AutoScanTest, StandsAtTheLowerEdgeOfItsWindow)
{
    EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
    EXPECT_TRUE(dialog.windowFlags() & Qt::FramelessWindowHint);
    for (const auto& enter : {std::function<void()>([&] { dialog.SetTimerScan(30); }),
                              std::function<void()>([&] { dialog.SetAutopageScan(); })}) {
        dialog.close();
        dialog.move(300, 0);
        dialog.show();
        enter();
        QCoreApplication::processEvents();
        const QRect place = dialog.geometry();
        EXPECT_TRUE(window.geometry().contains(place));
        EXPECT_LE(qAbs(place.center().x() - window.geometry().center().x()), 1) << "rounding";
        EXPECT_GT(place.top(), window.geometry().top() + window.height() * 2 / 3) << "the page is above";
        EXPECT_EQ(dialog.focusWidget(), part<QPushButton>("buttonStop"));
    }
}

// Continuous scanning, the second camera and composition, as the window's user meets them.
#include "WindowFixture.h"

#include "AutoScan.h"
#include "ConfigSet.h"
#include "ImageMerge.h"
#include "MoveVideoWidget.h"
#include "ToolBar.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QSignalSpy>
#include <QWheelEvent>

#include <future>

namespace {

class ScanWindowTest : public LumroScannerTest
{
protected:
    ScanWindowTest()
    {
        Dialogs::instance().information = [this](QWidget*, const QString&, const QString& text, auto) {
            messages_ << text;
            return QMessageBox::Yes;
        };
    }
    static std::string second(const std::string& more = "") { return camera(more, 2, "0bda5801"); }
    bool filesBecome(int count)
    {
        return QTest::qWaitFor([=] { return files().size() >= count; }, 15000);
    }
    AutoScan& scanDialog() const { return *window_->findChild<AutoScan*>(); }
    bool toolsEnabled() const { return view().findChild<ToolBar*>()->isEnabled(); }
    MoveVideoWidget* overlay() const { return window_->findChild<MoveVideoWidget*>(); }
    void tick(bool on) const
    {
        auto* box = window_->findChild<QCheckBox*>(QStringLiteral("checkAssist"));
        if (box->isChecked() != on)
            box->click();
    }
};

TEST_F(ScanWindowTest, TheTimerTakesPicturesUntilItIsStopped)
{
    settings::autoScanDelay.write(store_, 1);
    ASSERT_TRUE(shows(camera()));
    click("btnAutoScanner");
    ASSERT_TRUE(scanDialog().isVisible());
    EXPECT_EQ(scanDialog().windowTitle(), QStringLiteral("Timer Scan"));
    EXPECT_FALSE(toolsEnabled());
    window_->onScanner(); // refused while the dialog shows
    EXPECT_TRUE(files().isEmpty());
    ASSERT_TRUE(filesBecome(2));
    ASSERT_TRUE(QTest::qWaitFor([this] { return strip().Count() >= 2; }));

    QTest::mouseClick(scanDialog().findChild<QPushButton*>(QStringLiteral("buttonStop")), Qt::LeftButton);
    EXPECT_FALSE(scanDialog().isVisible());
    EXPECT_TRUE(toolsEnabled());
    // What the last tick began may still be saved; but no further tick comes, which was due in a second.
    QSignalSpy ticks(&scanDialog(), &AutoScan::timerScanReady);
    EXPECT_FALSE(ticks.wait(1300));
}

TEST_F(ScanWindowTest, SettingsOfTheWrongKindCountAsNotSet)
{
    useDesk(camera() + ", " + second());
    for (const QVariant& value : {QVariant(QStringLiteral("abc")), QVariant(-7), QVariant(99)}) {
        for (const char* key : {"Scan_Type",
                                "AutoScan_Type",
                                "AutoScan_Delay",
                                "Merge_Pos",
                                "Deskew",
                                "Camera_Synthesis",
                                "Camera_Resolution",
                                "Watermark_Pos"})
            store_.GetSettings()->setValue(QLatin1String(key), value);
        const int before = int(files().size());
        show();
        ASSERT_TRUE(waitForPicture());
        window_->onScanner();
        EXPECT_EQ(files().size(), before + 1) << qPrintable(value.toString());
        window_->onAutoScanner();
        EXPECT_EQ(scanDialog().windowTitle(), QStringLiteral("Timer Scan"));
        QTest::keyClick(&scanDialog(), Qt::Key_Escape);
        window_.reset();
    }
}

TEST_F(ScanWindowTest, ANewPageIsTakenOnceAndCounted)
{
    settings::autoScanType.write(store_, 0);
    ASSERT_TRUE(shows(camera(), page()));
    click("btnAutoScanner");
    EXPECT_EQ(scanDialog().windowTitle(), QStringLiteral("Auto Scan"));
    ASSERT_TRUE(filesBecome(1));
    const auto* count = scanDialog().findChild<QLabel*>(QStringLiteral("labelPageCount"));
    EXPECT_TRUE(QTest::qWaitFor([=] { return count->text() == QStringLiteral("1"); }));
    QTest::qWait(1200);
    EXPECT_EQ(files().size(), 1);
    QTest::keyClick(&scanDialog(), Qt::Key_Escape);
    EXPECT_TRUE(toolsEnabled());
}

TEST_F(ScanWindowTest, APageFoundJustBeforeStopIsNotTaken)
{
    settings::autoScanType.write(store_, 0);
    ASSERT_TRUE(shows(camera(), page()));
    std::promise<void> found;
    std::atomic<bool> first{true};
    // On the capture thread, behind the message to the window, which is not read before "Stop".
    QObject::connect(
        window_.get(),
        &LumroScanner::autopageScanSign,
        window_.get(),
        [&] {
            if (first.exchange(false))
                found.set_value();
        },
        Qt::DirectConnection);
    window_->onAutoScanner();
    ASSERT_EQ(found.get_future().wait_for(std::chrono::seconds(20)), std::future_status::ready);
    window_->onStopAutoScan();
    QCoreApplication::processEvents();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ScanWindowTest, TheWindowClosesWhileTimedCapturesWait)
{
    settings::autoScanDelay.write(store_, 1);
    useDesk(camera("stall_after = 0.5;"));
    for (int i = 0; i < 3; ++i) {
        show();
        ASSERT_TRUE(waitForPicture());
        QTest::qWait(600);
        for (int k = 0; k < 3; ++k)
            window_->onAutoScanTiemr();
        if (i == 1)
            QTest::qWait(50);
        window_->close();
        window_.reset();
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(ScanWindowTest, DevicesMayChangeWhileTimedCapturesRun)
{
    ASSERT_TRUE(shows(camera() + ", " + camera() + ", " + second()));
    for (int i = 0; i < 24; ++i) {
        window_->onAutoScanTiemr();
        switch (i % 4) {
        case 0:
            window_->onResolutionChanged(i / 4 % 2);
            break;
        case 1:
            window_->onDeviceChanged(i / 4 % 2);
            break;
        case 2:
            tick(i % 8 < 4);
            break;
        default:
            window_->onRotateChanged(i % 3);
            break;
        }
        QTest::qWait(15);
    }
    ASSERT_TRUE(filesBecome(1));
    window_.reset();
    EXPECT_EQ(
        QDir(pictures()).entryList(QStringList{QStringLiteral(".*")}, QDir::Files | QDir::Hidden).size(), 0)
        << "half a file";
}

TEST_F(ScanWindowTest, TheSecondCameraLiesOverThePreviewAndInTheCompositePicture)
{
    settings::cameraSynthesis.write(store_, true);
    settings::mergePos.write(store_, 3);
    ASSERT_TRUE(shows(camera() + ", " + second()));
    tick(true);
    ASSERT_TRUE(overlay() && overlay()->isVisible());
    const QRect main(view().GetImageCurrentPoint(), view().GetImageCurrentSize());
    EXPECT_EQ(overlay()->pos(),
              QPoint(main.left() + main.width() - overlay()->width() / 2 + 50,
                     main.top() + main.height() - overlay()->height() / 2));
    const auto zoomByWheel = [this] {
        QWheelEvent turn({50, 50}, {50, 50}, {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view(), &turn);
        return view().zoom();
    };
    EXPECT_EQ(zoomByWheel(), 1) << "the inset would not fit any more";
    settings::mergePos.write(store_, 0);
    Q_EMIT window_->findChild<ConfigSet*>()->currentmergepos(0);
    EXPECT_EQ(overlay()->pos(), main.topLeft()) << "where it is chosen";
    window_->resize(800, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(overlay()->pos(), view().GetImageCurrentPoint()) << "it goes with the picture";
    window_->onResolutionChanged(1); // the tools of the main camera go on working
    ASSERT_TRUE(waitForPicture());

    window_->onScanner();
    ASSERT_EQ(files().size(), 1);
    tick(false);
    EXPECT_FALSE(overlay() && overlay()->isVisible());
    EXPECT_GT(zoomByWheel(), 1) << "the mouse works the picture again";
    window_->onScanner();
    EXPECT_EQ(files().size(), 2);
}

TEST_F(ScanWindowTest, WhatCannotBeSavedIsToldWhoeverTookIt)
{
    settings::cameraSynthesis.write(store_, true);
    settings::setSavePath(store_, QString::fromStdString(folder().file("no/such/parent")));
    ASSERT_TRUE(shows(camera() + ", " + second()));
    const auto notice = [this] {
        return view().findChild<QTimer*>(QStringLiteral("noticeTimer"))->isActive();
    };
    const auto isTold = [&](const char* what, const std::function<void()>& capture) {
        view().ShowNotice(QString());
        const QImage before = view().grab().toImage();
        capture();
        EXPECT_TRUE(QTest::qWaitFor(notice, 10000)) << what;
        EXPECT_NE(view().grab().toImage(), before) << what;
    };
    isTold("timed", [this] { window_->onAutoScanTiemr(); });
    isTold("one", [this] { window_->onScanner(); });
    tick(true);
    ASSERT_TRUE(overlay());
    isTold("both cameras", [this] { window_->onScanner(); });
    EXPECT_EQ(strip().Count(), 0);
}

TEST_F(ScanWindowTest, TheSecondCameraIsRefusedWithDeskewAndGoesWhenItIsUnplugged)
{
    settings::deskew.write(store_, 1);
    ASSERT_TRUE(shows(camera() + ", " + second("unplug_after = 0.8;")));
    tick(true);
    EXPECT_TRUE(
        messages_.contains(QStringLiteral("Please turn off the deskew function before using it again!")));
    EXPECT_FALSE(overlay());
    settings::deskew.write(store_, 0);
    tick(true);
    ASSERT_TRUE(overlay());
    const auto* box = window_->findChild<QCheckBox*>(QStringLiteral("checkAssist"));
    EXPECT_TRUE(QTest::qWaitFor([=] { return !overlay() && !box->isChecked(); }, 10000));
    EXPECT_EQ(notice(), QStringLiteral("The second camera was disconnected."));
    tick(true); // at once: the desk gives a camera back after a second
    EXPECT_FALSE(box->isChecked()) << "there is none any more";
    window_->onScanner();
    EXPECT_EQ(files().size(), 1) << "the main camera goes on";
}

TEST_F(ScanWindowTest, TheMainCameraComesBackAlthoughTheSecondOneWasOpen)
{
    ASSERT_TRUE(shows(camera("unplug_after = 1.5;") + ", " + second()));
    tick(true);
    ASSERT_TRUE(overlay());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !hasPicture(); }, 10000));
    EXPECT_TRUE(QTest::qWaitFor([this] { return hasPicture(); }, 10000));
}

TEST_F(ScanWindowTest, ACameraIsTheMainOneOrTheSecondOne)
{
    ASSERT_TRUE(shows(camera() + ", " + second()));
    tick(true);
    ASSERT_TRUE(overlay());
    window_->onDeviceChanged(1); // what is shown as the second one
    EXPECT_TRUE(QTest::qWaitFor([this] { return !overlay(); }, 10000));
    EXPECT_TRUE(waitForPicture());
}

TEST_F(ScanWindowTest, TwoClicksJoinTwoSidesOfACard)
{
    ASSERT_TRUE(shows(camera()));
    click("btnCardCompose");
    EXPECT_EQ(files().size(), 1);
    EXPECT_FALSE(toolsEnabled());
    window_->onScanner();
    EXPECT_TRUE(messages_.contains(QStringLiteral("Please complete the image merge first!")));
    click("btnPicCompose");
    auto* merge = window_->findChild<ImageMerge*>();
    ASSERT_TRUE(merge->isVisible());
    EXPECT_TRUE(toolsEnabled());
    window_->onScanner(); // refused while the dialog shows
    EXPECT_EQ(files().size(), 2);
    merge->findChild<QRadioButton*>(QStringLiteral("radioUpDown"))->click();
    merge->findChild<QPushButton*>(QStringLiteral("buttonSave"))->click();
    ASSERT_EQ(files().size(), 3);
    EXPECT_EQ(QImage(pictures() + QStringLiteral("/IMAGE_002.jpg")).width(), 640);
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 3; }));
}

} // namespace

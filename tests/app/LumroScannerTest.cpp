#include "WindowFixture.h"

#include "BtnControl.h"
#include "ConfigSet.h"
#include "DiskFullAt.h"
#include "More.h"

#include <QComboBox>
#include <QPainter>

namespace {

TEST_F(LumroScannerTest, ClicksAndShortcutsBecomeFilesAndThumbnails)
{
    settings::shortcutDocument.write(store_, QStringLiteral("Ctrl+D"));
    ASSERT_TRUE(shows(camera()));
    click("btnScanner");
    click("btnDocument");
    EXPECT_EQ(files(), (QStringList{QStringLiteral("IMAGE_000.jpg"), QStringLiteral("IMAGE_001.jpg")}));
    window_->activateWindow();
    QTest::keyClick(window_.get(), Qt::Key_D, Qt::ControlModifier);
    ASSERT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 3; }));
    EXPECT_EQ(strip().GetFilePaths().first(), pictures() + QStringLiteral("/IMAGE_000.jpg"));
    EXPECT_EQ(QImage(strip().GetFilePaths().first()).size(), QSize(640, 480));
    settings::shortcutScanner.write(store_, QStringLiteral("Ctrl+Y"));
    Q_EMIT window_->findChild<ConfigSet*>()->shortcutschanged();
    QTest::keyClick(window_.get(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 4; })) << "without a new start";
}

TEST_F(LumroScannerTest, TheViewsRectangleAndRotationShapeTheCapture)
{
    ASSERT_TRUE(shows(camera()));
    Q_EMIT view().clickRotateSign(1);
    ASSERT_TRUE(QTest::qWaitFor([this] {
        const QSize shown = view().GetImageCurrentSize();
        return shown.height() > shown.width();
    }));
    view().onDeskewChanged(2, true);
    Q_EMIT view().clickDeskewSign(2, true);
    const auto drawQuarter = [this] {
        const QPoint topLeft = view().GetImageCurrentPoint();
        const QSize shown = view().GetImageCurrentSize();
        const QPoint middle = topLeft + QPoint(shown.width() / 2, shown.height() / 2);
        QTest::mousePress(&view(), Qt::LeftButton, Qt::NoModifier, topLeft);
        QTest::mouseRelease(&view(), Qt::LeftButton, Qt::NoModifier, middle);
    };
    const auto captureQuarter = [&] {
        drawQuarter();
        window_->onScanner();
    };
    captureQuarter();
    const QImage saved(pictures() + QStringLiteral("/IMAGE_000.jpg"));
    EXPECT_NEAR(saved.width(), 240, 4); // half of 480 x 640, one view pixel is less than two of the picture
    EXPECT_NEAR(saved.height(), 320, 4);
    EXPECT_EQ(settings::deskew.read(store_), 0); // the drawn rectangle is not remembered
    window_->onResolutionChanged(1);
    for (int i = 0; i < 2; ++i) // when the second one comes the first is shown, and the rectangle gone
        ASSERT_TRUE(window_->GetImageSync(std::chrono::seconds(20)));
    QCoreApplication::processEvents();
    captureQuarter();
    const QImage smaller(pictures() + QStringLiteral("/IMAGE_001.jpg"));
    EXPECT_NEAR(smaller.width(), 120, 4) << "the choice outlives another resolution";
    EXPECT_NEAR(smaller.height(), 160, 4);
    view().toggleFreeze();
    drawQuarter();
    click("buttonSaveFrozen");
    const QImage frozen(pictures() + QStringLiteral("/IMAGE_002.jpg"));
    EXPECT_NEAR(frozen.width(), 120, 4);
    EXPECT_NEAR(frozen.height(), 160, 4);
}

TEST_F(LumroScannerTest, TheGuardRefusesWhileADialogIsOpenOrAMergeWaits)
{
    ASSERT_TRUE(shows(camera()));
    window_->onMore();
    window_->onScanner();
    window_->onDeskewChanged(1, true);
    window_->findChild<QComboBox*>(QStringLiteral("comboResolution"))->setCurrentIndex(1);
    window_->onResolutionChanged(1);
    EXPECT_EQ(view().GetResolutionCurrentIndex(), 0) << "what runs is shown";
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(settings::deskew.read(store_), 0);
    window_->findChild<More*>()->close();

    window_->setMergePending(true);
    window_->onDocument();
    window_->onSign();
    EXPECT_EQ(messages_.count(QStringLiteral("Please complete the image merge first!")), 2);
    EXPECT_TRUE(files().isEmpty());
    window_->setMergePending(false);
    window_->onScanner();
    EXPECT_EQ(files().size(), 1);
}

TEST_F(LumroScannerTest, TheSettingsActAtOnceAndALanguageAfterARestart)
{
    ASSERT_TRUE(shows(camera()));
    click("setting");
    auto* dialog = window_->findChild<ConfigSet*>();
    ASSERT_TRUE(dialog && dialog->isVisible());
    window_->onScanner();
    window_->onMore();
    EXPECT_TRUE(files().isEmpty());
    EXPECT_FALSE(window_->findChild<More*>()->isVisible());

    Q_EMIT dialog->booklineclicked(true);
    EXPECT_TRUE(view().GetBooklineEnable());
    Q_EMIT dialog->languageitemchanged(2);
    EXPECT_TRUE(messages_.contains(QStringLiteral("Restart the software to take effect!")));
    window_->onSettings();
    EXPECT_FALSE(dialog->isVisible());
    window_->onScanner();
    EXPECT_EQ(files().size(), 1);
}

TEST_F(LumroScannerTest, ADeviceThatCannotBeOpenedIsNamed)
{
    useDesk(camera() + ", " + camera("fail_create = true;") + ", " + camera("fail_start = true;"));
    show();
    for (const auto& [row, told] :
         {std::pair(1, QStringList{QStringLiteral("Waring"), QStringLiteral("Device create failed!")}),
          std::pair(2, QStringList{QStringLiteral("Error"), QStringLiteral("video create failed!")})}) {
        window_->onDeviceChanged(0);
        ASSERT_TRUE(waitForPicture());
        messages_.clear();
        window_->onDeviceChanged(row);
        EXPECT_EQ(messages_, told);
        EXPECT_FALSE(hasPicture()) << "that of the camera before";
    }
    window_->onDeviceChanged(0);
    EXPECT_TRUE(waitForPicture());
}

TEST_F(LumroScannerTest, ACameraThatFallsSilentIsToldOf)
{
    ASSERT_TRUE(shows(camera("stall_after = 1.0;")));
    const auto isTold = [this] { return notice() == QStringLiteral("The camera delivers no picture."); };
    EXPECT_TRUE(QTest::qWaitFor(isTold, 60'000));
    EXPECT_TRUE(hasPicture()) << "the last one stays";
}

TEST_F(LumroScannerTest, ADeviceThatVanishesDuringACaptureDoesNotHoldTheWindowUp)
{
    ASSERT_TRUE(shows(camera("stall_after = 1.0; unplug_after = 2.5;")));
    ::testing::internal::CaptureStderr();
    while (hasPicture()) {
        window_->onScanner();
        QCoreApplication::processEvents();
    }
    const std::string errors = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(errors.find("Get image timeout!"), std::string::npos) << errors;
    EXPECT_EQ(strip().Count(), files().size());
}

TEST_F(LumroScannerTest, CroppingOptionsAndTheResolutionAreStored)
{
    ASSERT_TRUE(shows(camera()));
    for (const auto& [option, on, stored] :
         {std::tuple(0, true, 1), {0, false, 0}, {1, true, 2}, {7, true, 2}, {1, false, 0}}) {
        window_->onDeskewChanged(option, on);
        EXPECT_EQ(settings::deskew.read(store_), stored) << option << on;
    }
    EXPECT_EQ(view().GetResolutionCurrentIndex(), 0);
    window_->onResolutionChanged(1);
    EXPECT_EQ(settings::cameraResolution.read(store_), 1);
    window_->onScanner();
    EXPECT_EQ(QImage(pictures() + QStringLiteral("/IMAGE_000.jpg")).size(), QSize(320, 240));

    window_->onDeviceChanged(0);
    EXPECT_EQ(view().GetResolutionCurrentIndex(), 1) << "opened with it again";
    settings::cameraResolution.write(store_, 99); // a list entry that this device does not have
    window_->onDeviceChanged(0);
    EXPECT_EQ(view().GetResolutionCurrentIndex(), 0);
}

TEST_F(LumroScannerTest, OfTwoPagesTheOneThatFitsOnTheDiskIsSavedAndTheOtherTold)
{
    QImage desk = solid(640, 480, Qt::darkGray);
    QPainter painter(&desk);
    for (const int left : {40, 350})
        painter.fillRect(left, 60, 250, 360, qRgb(245, 245, 245));
    for (int i = 0; i < 9000; ++i) // the right one takes many bytes
        painter.fillRect(370 + i * 7 % 210, 80 + i * 13 % 320, 2, 1, qRgb(i * 37 % 256, 90, i % 256));
    painter.end();
    settings::deskew.write(store_, 2);
    ASSERT_TRUE(shows(camera(), desk));
    {
        const DiskFullAt limit(20'000);
        window_->onScanner();
    }
    EXPECT_EQ(files().size(), 1);
    EXPECT_TRUE(notice().startsWith(QStringLiteral("1 of 2 pages could not be saved.")))
        << qPrintable(notice());
    window_->onScanner();
    EXPECT_EQ(files().size(), 3);
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 3; }));
}

TEST_F(LumroScannerTest, HardwareKeysZoomOrCapture)
{
    ASSERT_TRUE(shows(camera()));
    LumroScanner::hidkeydevcallback(0, window_.get());
    LumroScanner::usbhidkeydevcallback(8, window_.get());
    ASSERT_TRUE(QTest::qWaitFor([this] { return view().zoom() > 1.05; }));
    LumroScanner::hidkeydevcallback(1, window_.get());
    QCoreApplication::processEvents(); // served by now: one key at a time is taken
    LumroScanner::hidkeydevcallback(9, window_.get());
    ASSERT_TRUE(QTest::qWaitFor([this] { return view().zoom() < 1.05; }));
    EXPECT_TRUE(files().isEmpty());
    LumroScanner::usbhidkeydevcallback(5, window_.get());
    EXPECT_TRUE(QTest::qWaitFor([this] { return files().size() == 1; }, 10000));
}

TEST_F(LumroScannerTest, HardwareKeysDoNotCaptureMeanwhileOrBehindADialog)
{
    ASSERT_TRUE(shows(camera()));
    const auto press = [this](int key) { LumroScanner::usbhidkeydevcallback(key, window_.get()); };
    for (const int key : {2, 2, 8, 2})
        press(key); // nothing is served before the next line
    QCoreApplication::processEvents();
    EXPECT_EQ(files().size(), 1);
    EXPECT_LT(view().zoom(), 1.05);
    press(2);
    window_->onDocument(); // by a click, while the press waits
    QCoreApplication::processEvents();
    EXPECT_EQ(files().size(), 2);
    press(2);
    QCoreApplication::processEvents();
    EXPECT_EQ(files().size(), 3) << "the next one counts again";

    const auto pressBoth = [this] {
        for (const int key : {8, 2}) {
            LumroScanner::hidkeydevcallback(key, window_.get());
            QCoreApplication::processEvents();
        }
    };
    for (const auto modality : {Qt::WindowModal, Qt::ApplicationModal}) {
        QMessageBox box(window_.get());
        box.setWindowModality(modality);
        box.show();
        pressBoth();
        EXPECT_EQ(files().size(), 3) << modality;
        EXPECT_GT(view().zoom(), 1.05) << "which concerns no dialog";
        press(9);
        QCoreApplication::processEvents();
    }
    pressBoth();
    EXPECT_EQ(files().size(), 4);
    EXPECT_GT(view().zoom(), 1.05);
}

TEST_F(LumroScannerTest, ClosingWhileFramesArriveEndsCleanly)
{
    useDesk(camera());
    for (int i = 0; i < 5; ++i) {
        show();
        ASSERT_TRUE(waitForPicture());
        if (i % 2)
            window_->onCloseApp();
        else
            window_->close();
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(window_->GetImageSync(std::chrono::seconds(2)), nullptr);
        const std::string errors = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(errors.find("timeout"), std::string::npos) << "nothing is waited for any more";
        window_.reset();
    }
}

} // namespace

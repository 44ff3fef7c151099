#include "BarcodeScan.h"

#include "../barcode/MadeCodes.h"
#include "BarCode.h"
#include "FakeDesk.h"
#include "Image.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <zint.h>

namespace {

constexpr int patienceMs = 20000;

class BarcodeScanTest : public ::testing::Test
{
protected:
    BarcodeScanTest()
    {
        desk.frameSize = {900, 700};
        desk.savesAs << QStringLiteral("/pictures/one.jpg") << QStringLiteral("/pictures/two.jpg");
        desk.whileSaving = [this](void* image) { static_cast<mirvak::Image*>(image)->pixels = page.rgb(); };
    }
    void lay(const char* text, double x, double y, int symbology = BARCODE_QRCODE)
    {
        CodePage::Place place;
        place.centre = {x, y};
        page.add(symbology, text, place);
    }
    void scanAndWait()
    {
        scan.scan();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !scan.isReading(); }, patienceMs));
    }
    QLineEdit* field() const { return scan.window()->findChild<QLineEdit*>(); }
    QString shown() const
    {
        return scan.window() && scan.window()->isVisible() ? field()->text() : QString();
    }

    CodePage page{900, 700};
    FakeDesk desk;
    BarcodeScan scan{desk, desk.camera};
};

} // namespace

TEST_F(BarcodeScanTest, ShowsAllTextsEachFollowedByThreeSpaces)
{
    lay("造纸坊", 200, 180);
    lay("B 2", 650, 200, BARCODE_CODE128);
    lay("c", 300, 520, BARCODE_DATAMATRIX);
    scanAndWait();
    EXPECT_EQ(shown(), QStringLiteral("造纸坊   B 2   c   "));
    EXPECT_EQ(desk.colourModes, QList<int>{0}) << "saved as a capture, without colours";
    EXPECT_TRUE(desk.thumbnails.isEmpty());
    EXPECT_TRUE(desk.notices.isEmpty());
    const BarCode* window = scan.window();
    page = CodePage(900, 700);
    lay("second", 400, 300);
    scanAndWait();
    EXPECT_EQ(shown(), QStringLiteral("second   ")) << "replaced";
    EXPECT_EQ(scan.window(), window) << "kept";
}

TEST_F(BarcodeScanTest, ReadsWhatStandsAtTheEdgeOfASheet)
{
    page = CodePage(900, 700, 60);
    const cv::Mat desktop = page.grey();
    desktop(cv::Rect(120, 80, 660, 540)).setTo(235);
    lay("edge", 120 + 60, 80 + 60);
    scanAndWait();
    EXPECT_EQ(shown(), QStringLiteral("edge   "));
}

TEST_F(BarcodeScanTest, ShowsNothingWithoutLeaveFrameOrCodeNorAfterTheEnd)
{
    scanAndWait();
    EXPECT_EQ(desk.colourModes.size(), 1) << "the capture stays";
    desk.frameComes = false;
    scanAndWait();
    EXPECT_EQ(desk.colourModes.size(), 1);
    EXPECT_EQ(desk.notices.size(), 2);
    desk.allowed = false;
    scanAndWait();
    EXPECT_EQ(desk.framesTaken, 2);
    EXPECT_EQ(scan.window(), nullptr);

    desk.allowed = desk.frameComes = true;
    lay("late", 400, 300);
    auto other = std::make_unique<BarcodeScan>(desk, desk.camera);
    other->scan();
    EXPECT_TRUE(other->isReading());
    other.reset();
    QCoreApplication::processEvents(); // what was posted must be void
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}

TEST_F(BarcodeScanTest, AStormOfClicksReadsOnePicture)
{
    lay("one", 400, 300);
    desk.whileTaking = [this] {
        QMetaObject::invokeMethod(
            &scan, [this] { scan.scan(); }, Qt::QueuedConnection);
    };
    scan.scan();
    scan.scan();
    EXPECT_TRUE(scan.isReading()) << "the click returns while the codes are being read";
    EXPECT_TRUE(QTest::qWaitFor([this] { return !scan.isReading(); }, patienceMs));
    EXPECT_EQ(desk.framesTaken, 1);
    desk.frameComes = false;
    scan.scan();
    QCoreApplication::processEvents();
    EXPECT_EQ(desk.framesTaken, 2) << "a click that waited for the frame of the first does not wait again";
}

TEST_F(BarcodeScanTest, CancelledItShowsNothingAndReadsTheNextPicture)
{
    lay("one", 400, 300);
    desk.whenShown = [](Job& job) { job.stop(); };
    scanAndWait();
    EXPECT_EQ(scan.window(), nullptr);
    EXPECT_TRUE(desk.notices.value(0).contains(QStringLiteral("cancelled")));
    EXPECT_TRUE(desk.job.expired()) << "the bar would stay";
    desk.whenShown = [this](Job&) { scan.scan(); };
    scanAndWait();
    EXPECT_EQ(shown(), QStringLiteral("one   "));
    EXPECT_EQ(desk.framesTaken, 2) << "a second start takes no frame";
    EXPECT_EQ(desk.notices.size(), 2) << "and is told why";
}

TEST(BarCodeWindow, HasItsPlaceAndKindAndCopiesWhatTheUserHasMadeOfTheText)
{
    BarCode window;
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    EXPECT_EQ(window.objectName(), QStringLiteral("BarCode"));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Form"));
    EXPECT_EQ(window.size(), QSize(584, 219));
    EXPECT_EQ(window.pos(), QPoint((screen.width() - 584) / 2, (screen.height() - 219) / 2));
    EXPECT_EQ(window.windowModality(), Qt::WindowModal);
    EXPECT_TRUE(window.windowFlags() & Qt::FramelessWindowHint);
    EXPECT_TRUE(window.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(window.parent(), nullptr);
    EXPECT_FALSE(window.testAttribute(Qt::WA_QuitOnClose)) << "it must not keep the program alive";

    window.SetCodeData(QStringLiteral("old"));
    window.SetCodeData(QStringLiteral("造纸坊   "));
    window.show();
    auto* field = window.findChild<QLineEdit*>();
    QTest::keyClicks(field, QStringLiteral("No. "));
    QTest::mouseClick(window.findChild<QPushButton*>(QStringLiteral("buttonCopy")), Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("No. 造纸坊   "));
    QTest::keyClicks(field, QStringLiteral("5 "));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("No. 5 造纸坊   "));
    const auto closers = window.findChildren<QPushButton*>(QStringLiteral("buttonClose"));
    ASSERT_EQ(closers.size(), 2) << "that of the title bar too";
    for (QPushButton* close : closers) {
        window.show();
        QTest::mouseClick(close, Qt::LeftButton);
        EXPECT_FALSE(window.isVisible());
        window.show();
        QTest::keyClicks(field, QStringLiteral("x"));
        close->setFocus();
        QTest::keyClick(close, Qt::Key_Return);
        EXPECT_FALSE(window.isVisible());
        EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("No. 5 造纸坊   "))
            << "not copied too";
    }
    window.show();
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

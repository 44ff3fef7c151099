#include "PdfEx.h"

#include "../pdf/PdfTools.h"
#include "../ui/AnsweredDialogs.h"
#include "OutputFixture.h"
#include "Part.h"
#include "PdfExControl.h"
#include "PdfTexts.h"
#include "PdfView.h"
#include "ShotHint.h"
#include "Thumbnail.h"
#include "TimerEnd.h"
#include "Words.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <thread>

namespace {

class PdfExTest : public OutputTest
{
protected:
    ~PdfExTest() override { dialog.close(); }

    /// Of the listed pages.
    std::string names() const
    {
        return dialog.pages().join(u' ').remove(path() + QLatin1Char('/')).toStdString();
    }
    QStringList pdfs() const { return files("*.pdf"); }
    size_t pagesOfThePdf() const { return tools::pageSizes(desk.documents.value(0).toStdString()).size(); }
    void open() { control.open(&dialog, 1600, 1200, 0, 1); }
    void click(const char* name) const { QTest::mouseClick(part<QPushButton>(dialog, name), Qt::LeftButton); }
    /// ... and waits until the dialog can be used again or has closed.
    void pressPdf()
    {
        click("Pdf");
        const auto* panel = dialog.findChild<QWidget*>(QStringLiteral("panel"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return panel->isEnabled(); }));
    }
    bool closes()
    {
        return QTest::qWaitFor([&] { return !dialog.isVisible(); });
    }
    QString note() const { return dialog.findChild<QLabel*>(QStringLiteral("labelNote"))->text(); }

    AnsweredDialogs answers;
    QWidget window;
    PdfEx dialog{&window, desk.camera};
    PdfTexts texts{desk, desk.camera, QStringLiteral(OCR_MODELS)};
    PdfExControl control{desk, dialog, texts};
    QSignalSpy quit{&dialog, &PdfEx::setpdfquitsignal};
};

} // namespace

TEST_F(PdfExTest, OpensUnderTheGuardAndGivesTheToolsBack)
{
    desk.allowed = false;
    open();
    EXPECT_FALSE(dialog.isVisible() || dialog.takesFrames());
    desk.allowed = true;
    open();
    EXPECT_TRUE(dialog.isVisible() && dialog.takesFrames());
    EXPECT_FALSE(desk.toolsEnabled);
    QHideEvent minimised;
    QSpontaneKeyEvent::setSpontaneous(&minimised);
    qApp->notify(&dialog, &minimised);
    EXPECT_TRUE(dialog.takesFrames()) << "it comes back as it was";
    click("buttonClose");
    EXPECT_FALSE(dialog.isVisible() || dialog.takesFrames());
    EXPECT_TRUE(desk.toolsEnabled);
    EXPECT_EQ(quit.count(), 1);
    const QSignalSpy scanned(&dialog, &PdfEx::pdfexscannered);
    dialog.onScannerImg();
    EXPECT_EQ(scanned.count(), 0) << "its device may have gone since";
}

TEST_F(PdfExTest, ScansAndChosenFilesBecomeOnePdf)
{
    settings::scanType.write(settings, 4);
    open();
    desk.pagesInShot = 2; // side by side
    desk.savesAs << save("扫描.jpg") << save("other.jpg");
    click("Scanner");
    EXPECT_EQ(names(), "扫描.jpg other.jpg");
    QTest::keyClick(dialog.findChild<Thumbnail*>(), Qt::Key_End);
    QTest::keyClick(dialog.findChild<Thumbnail*>(), Qt::Key_Delete);
    answers.chosenFiles = QStringList{save("b.png", Qt::green), save("c.jpeg", Qt::blue), save("d.bmp")};
    answers.chosenFiles << save("e.JPG", Qt::red, "JPG") << path("missing.jpg");
    click("AddImages");
    EXPECT_TRUE(note().contains(QStringLiteral("d.bmp, e.JPG"))) << qPrintable(note());
    // The missing one stands in the list until its picture has been looked for.
    EXPECT_TRUE(QTest::qWaitFor([&] { return names() == "扫描.jpg b.png c.jpeg"; }, 10000)) << names();
    EXPECT_EQ(desk.colourModes, (QList<int>{4, 4}));
    EXPECT_TRUE(desk.thumbnails.isEmpty());
    click("Pdf");
    ASSERT_TRUE(closes());
    ASSERT_EQ(pdfs().size(), 1);
    EXPECT_EQ(desk.documents, QStringList{path(pdfs()[0].toUtf8().constData())});
    EXPECT_FALSE(desk.documentIcons[0].isNull());
    EXPECT_TRUE(QFile::exists(path("b.png"))) << "the files stay";
    open();
    EXPECT_TRUE(dialog.pages().isEmpty()) << "every opening starts anew";
    EXPECT_EQ(dialog.questionBeforeClosing(), QString()) << "there is nothing to lose";
    EXPECT_EQ(pagesOfThePdf(), 3U);
    EXPECT_GT(tools::rendered(desk.documents[0].toStdString(), 2).at<cv::Vec3b>(3, 3)[1], 200)
        << "the green one is the second";
}

TEST_F(PdfExTest, TheListGivesTheOrderOfThePagesAndTakesMany)
{
    open();
    for (const char* name : {"a.png", "b.png", "c.png"})
        dialog.SetScannerImage(save(name));
    auto* list = dialog.findChild<QListWidget*>();
    EXPECT_EQ(list->dragDropMode(), QAbstractItemView::InternalMove);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(list->item(i)->flags() & Qt::ItemIsDropEnabled) << "a page falls between others";
    dialog.findChild<Thumbnail*>()->onMoveUp();
    QTest::keyClick(dialog.findChild<Thumbnail*>(), Qt::Key_Home);
    QTest::keyClick(dialog.findChild<Thumbnail*>(), Qt::Key_Delete);
    EXPECT_EQ(names(), "c.png b.png");
    EXPECT_TRUE(QFile::exists(path("a.png")));

    for (int i = 0; i < 150; ++i)
        answers.chosenFiles << save(QStringLiteral("page%1.png").arg(i).toLatin1().constData());
    click("AddImages");
    EXPECT_EQ(dialog.pages().mid(2), answers.chosenFiles);
    dialog.SetScannerImage(save("scan.png")); // while the chosen ones are being listed
    EXPECT_EQ(dialog.pages().mid(2), answers.chosenFiles + QStringList{path("scan.png")});
    click("Pdf");
    ASSERT_TRUE(closes());
    EXPECT_EQ(pagesOfThePdf(), 153U);
    open();
    click("AddImages");
    dialog.close();
    open();
    EXPECT_TRUE(dialog.pages().isEmpty()) << "nor those that were not listed yet";
}

TEST_F(PdfExTest, FailuresAreSaid)
{
    open();
    click("Pdf");
    EXPECT_FALSE(note().isEmpty());
    EXPECT_TRUE(dialog.isVisible());
    desk.frameComes = false;
    click("Scanner");
    EXPECT_FALSE(note().isEmpty());
    desk.frameComes = true;
    click("Scanner"); // cannot be saved
    EXPECT_FALSE(note().isEmpty());
    EXPECT_TRUE(dialog.pages().isEmpty());

    dialog.SetScannerImage(save("a.png"));
    settings::setSavePath(settings, path("no folder"));
    pressPdf();
    EXPECT_TRUE(dialog.isVisible() && !note().isEmpty() && answers.messages.isEmpty());
    EXPECT_EQ(dialog.pages(), QStringList{path("a.png")});
    EXPECT_TRUE(desk.documents.isEmpty()) << "there is no file";
    EXPECT_FALSE(QFile::exists(path("no folder"))) << "it is not made here";
    Dialogs::instance().openUrl = [](const QUrl&) { return false; };
    click("Open-path");
    EXPECT_TRUE(note().contains(path("no folder"))) << qPrintable(note());
}

TEST_F(PdfExTest, WhatCannotBeAPageIsNamedAndTheListStays)
{
    open();
    for (const char* name : {"a.png", "b.png", "c.png"})
        dialog.SetScannerImage(save(name, Qt::green));
    folder.write("b.png", "broken meanwhile");
    pressPdf();
    EXPECT_TRUE(note().contains(QStringLiteral("b.png"))) << qPrintable(note());
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(names(), "a.png b.png c.png");
    EXPECT_TRUE(pdfs().isEmpty() && desk.documents.isEmpty());
    save("b.png");
    pressPdf();
    EXPECT_EQ(pagesOfThePdf(), 3U) << "no page of the first try";

    open();
    dialog.SetScannerImage(save("a.bmp"));
    EXPECT_TRUE(note().contains(QStringLiteral("a.bmp"))) << "said at once";
    pressPdf();
    EXPECT_TRUE(note().contains(QStringLiteral("a.bmp")));
    EXPECT_EQ(desk.documents.size(), 1);
    dialog.SetScannerImage(save("b.png"));
    pressPdf();
    EXPECT_TRUE(note().contains(QStringLiteral("a.bmp"))) << qPrintable(note());
    EXPECT_FALSE(note().contains(QStringLiteral("b.png")));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(names(), "a.bmp b.png");
    EXPECT_EQ(pdfs().size(), 2);
    EXPECT_EQ(desk.documents.size(), 2);
}

TEST_F(PdfExTest, StaysOpenWhileThePdfIsWrittenAndCanGo)
{
    open();
    dialog.SetScannerImage(save("a.png"));
    EXPECT_FALSE(dialog.questionBeforeClosing().isEmpty());
    click("Pdf");
    EXPECT_TRUE(dialog.questionBeforeClosing().isEmpty()) << "nothing can be lost meanwhile";
    dialog.close(); // before the event loop has brought the result
    EXPECT_TRUE(dialog.isVisible());
    click("Pdf"); // no second one
    ASSERT_TRUE(closes());
    EXPECT_EQ(desk.documents.size(), 1);

    {
        PdfEx other(nullptr, desk.camera);
        other.SetScannerImage(save("a.png"));
        other.onPdfEx();
    }
    EXPECT_LE(pdfs().size(), 2); // was it quicker?
    EXPECT_EQ(files().size(), 1 + pdfs().size()) << "something half is left";
    PdfEx unused(nullptr, desk.camera);
    EXPECT_TRUE(unused.close());
}

TEST_F(PdfExTest, CancelledItLeavesNoFileAndTheListAndCanBeginAgain)
{
    open();
    QImage large(2400, 1800, QImage::Format_ARGB32); // which is coded anew: longer than this thread may rest
    for (int y = 0; y < large.height(); ++y)
        for (int x = 0; x < large.width(); ++x)
            large.setPixel(x, y, qRgba(x * y, x + y, x ^ y, 200));
    ASSERT_TRUE(large.save(path() + QStringLiteral("/page.png"), nullptr, 100));
    dialog.SetScannerImage(path() + QStringLiteral("/page.png"));
    for (int i = 1; i < 60; ++i)
        dialog.SetScannerImage(save(QStringLiteral("page%1.png").arg(i).toLatin1().constData()));
    auto* cancel = part<QPushButton>(dialog, "buttonCancelJob");
    part<QPushButton>(dialog, "Pdf")->click(); // at once, before a quick machine has written it
    cancel->click();                           // whether it shows already or not
    EXPECT_FALSE(cancel->isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !note().isEmpty(); }, 60000));
    EXPECT_TRUE(note().startsWith(QStringLiteral("Cancelled")));
    EXPECT_EQ(files().size(), 60) << "no PDF, whole or half";
    EXPECT_EQ(dialog.pages().size(), 60);
    EXPECT_TRUE(desk.documents.isEmpty());
    click("Pdf");
    ASSERT_TRUE(closes());
    EXPECT_EQ(pagesOfThePdf(), 60U);
}

TEST_F(PdfExTest, ShowsTheNewestFrameAndSaysWhenItStandsStill)
{
    QImage frame(64, 48, QImage::Format_RGB888);
    dialog.SetPdfDataframe(frame); // not shown yet: dropped
    open();
    auto* preview = dialog.findChild<PdfView*>();
    const auto colour = [&] { return preview->grab().toImage().pixelColor(preview->rect().center()); };
    const QColor without = colour();
    std::thread camera([&] {
        for (const QColor& next : {QColor(Qt::red), QColor(Qt::blue)}) {
            frame = QImage(64, 48, QImage::Format_RGB888);
            frame.fill(next);
            dialog.SetPdfDataframe(frame);
        }
        dialog.SetPdfDataframe(QImage());
    });
    camera.join();
    EXPECT_TRUE(QTest::qWaitFor([&] { return colour() == QColor(Qt::blue); }));
    dialog.close();
    open();
    EXPECT_EQ(colour(), without);

    const auto look = [&] {
        QCoreApplication::processEvents();
        return preview->grab().toImage();
    };
    frame.fill(Qt::green);
    dialog.SetPdfDataframe(frame);
    const QImage live = look();
    endNow(*preview->findChild<QTimer*>());
    EXPECT_NE(look(), live);
    dialog.SetPdfDataframe(frame);
    EXPECT_EQ(look(), live);
    EXPECT_TRUE(preview->findChild<QTimer*>()->isActive()) << "it may stop again";
}

TEST_F(PdfExTest, TellsWhetherTheLivePageWillBeGood)
{
    open();
    auto* preview = dialog.findChild<PdfView*>();
    const auto* hint = preview->findChild<ShotHint*>();
    const auto said = [&] { return hint->isVisible() ? hint->accessibleName() : QString(); };
    const auto show = [&](MirvakShot shot) {
        QImage frame(400, 300, QImage::Format_RGB888);
        frame.fill(Qt::gray);
        dialog.SetPageMark({shot, QPolygonF(QRectF(100, 100, 200, 100))});
        dialog.SetPdfDataframe(frame);
        QCoreApplication::processEvents();
    };
    /// On the upper side of the page.
    const auto colour = [&] {
        const QImage seen = preview->grab().toImage();
        const QSize picture = QSize(400, 300).scaled(seen.size(), Qt::KeepAspectRatio);
        return seen.pixelColor(seen.width() / 2,
                               (seen.height() - picture.height()) / 2 + picture.height() / 3);
    };
    show(MIRVAK_SHOT_GOOD);
    EXPECT_GT(colour().green(), colour().red() + 50);
    EXPECT_EQ(said(), QString());
    show(MIRVAK_SHOT_TOO_BLURRED);
    EXPECT_LE(colour().green(), colour().red());
    EXPECT_EQ(said(), QStringLiteral("too blurred"));
    EXPECT_TRUE(preview->rect().contains(hint->geometry()));
    endNow(*preview->findChild<QTimer*>()); // the camera delivers no more
    EXPECT_EQ(said(), QString());
    show(MIRVAK_SHOT_MOVING);
    EXPECT_EQ(said(), QStringLiteral("page is moving"));
    dialog.close();
    open();
    EXPECT_EQ(said(), QString()) << "of a page that lay there before";
}

TEST_F(PdfExTest, SavesPicturesAsCapturesAreNamed)
{
    QImage image(100, 80, QImage::Format_RGB32);
    image.fill(Qt::green);
    save("IMAGE_004.jpg");
    EXPECT_EQ(dialog.imageSave(image, 0), path("IMAGE_005.jpg"));
    EXPECT_EQ(QImage(path("IMAGE_005.jpg")).size(), QSize(100, 80));
    EXPECT_EQ(dialog.imageSave(image, 2), path("IMAGE_006.jpg")) << "named, not written";
    EXPECT_FALSE(QFile::exists(path("IMAGE_006.jpg")));
    settings::deskew.write(settings, 1);
    settings::imageFormat.write(settings, 1);
    EXPECT_EQ(dialog.imageSave(image, 3), path("IMAGE_000.png"));
    const QImage cut(path("IMAGE_000.png"));
    EXPECT_EQ(cut.size(), QSize(70, 50));
    EXPECT_NEAR(cut.dotsPerMeterX(), 8464, 1);
    EXPECT_TRUE(dialog.imageSave(QImage(), 0).isEmpty());
}

TEST_F(PdfExTest, FitsInEveryLanguage)
{
    expectRoomForWords([this] { return std::make_unique<PdfEx>(nullptr, desk.camera); });
}

#include "PdfEx.h"

#include "../pdf/PdfTools.h"
#include "../ui/AnsweredDialogs.h"
#include "FakeDesk.h"
#include "PdfExControl.h"
#include "PdfView.h"
#include "Settings.h"
#include "TempDir.h"
#include "Thumbnail.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTranslator>

#include <thread>

namespace {

class PdfExTest : public ::testing::Test
{
protected:
    PdfExTest()
    {
        ConfigSettings store;
        settings::setSavePath(store, QString::fromStdString(folder.path()));
    }
    ~PdfExTest() override
    {
        dialog.close();
        ConfigSettings().GetSettings()->clear();
    }

    QString path(const char* name) const { return QString::fromStdString(folder.file(name)); }
    QString save(const char* name, const QColor& colour = Qt::red, const char* format = nullptr) const
    {
        QImage image(40, 30, QImage::Format_RGB32);
        image.fill(colour);
        EXPECT_TRUE(image.save(path(name), format));
        return path(name);
    }
    QStringList names() const
    {
        QStringList result;
        for (const QString& page : dialog.pages())
            result << page.section(QLatin1Char('/'), -1);
        return result;
    }
    QStringList pdfs() const
    {
        return QDir(QString::fromStdString(folder.path())).entryList({QStringLiteral("*.pdf")});
    }
    int entries() const
    {
        return QDir(QString::fromStdString(folder.path())).entryList(QDir::Files | QDir::Hidden).size();
    }
    void open() { control.open(&dialog, 1600, 1200, 0, 1); }
    void click(const char* name) const
    {
        auto* button = dialog.findChild<QPushButton*>(QLatin1String(name));
        ASSERT_NE(button, nullptr) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }
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

    const TempDir folder;
    AnsweredDialogs answers;
    FakeDesk desk;
    QWidget window;
    PdfEx dialog{&window, desk.camera};
    PdfExControl control{desk, dialog};
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
    click("buttonClose");
    EXPECT_FALSE(dialog.isVisible() || dialog.takesFrames());
    EXPECT_TRUE(desk.toolsEnabled);
    EXPECT_EQ(quit.count(), 1);
}

TEST_F(PdfExTest, APictureThatStandsStillSaysSoUntilTheNextOneComes)
{
    open();
    auto* preview = dialog.findChild<PdfView*>();
    const auto shows = [&] {
        QCoreApplication::processEvents();
        return preview->grab().toImage();
    };
    QImage frame(40, 30, QImage::Format_RGB888);
    frame.fill(Qt::green);
    dialog.SetPdfDataframe(frame);
    const QImage live = shows();
    preview->findChild<QTimer*>()->start(0); // the same end, sooner
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows() != live; }));
    dialog.SetPdfDataframe(frame);
    EXPECT_EQ(shows(), live);
    EXPECT_TRUE(preview->findChild<QTimer*>()->isActive()) << "it may stop again";
}

TEST_F(PdfExTest, ScansAndChosenFilesBecomeOnePdf)
{
    ConfigSettings store;
    settings::scanType.write(store, 4);
    open();
    desk.savesAs << save("扫描.jpg");
    click("Scanner");
    answers.chosenFiles = QStringList{save("b.png", Qt::green), save("c.jpeg", Qt::blue), save("d.bmp")};
    answers.chosenFiles << save("e.JPG", Qt::red, "JPG") << path("missing.jpg");
    click("AddImages");
    EXPECT_TRUE(note().contains(QStringLiteral("d.bmp, e.JPG"))) << qPrintable(note());
    const QStringList expected{QStringLiteral("扫描.jpg"), QStringLiteral("b.png"), QStringLiteral("c.jpeg")};
    // The missing one stands in the list until its picture has been looked for.
    EXPECT_TRUE(QTest::qWaitFor([&] { return names() == expected; }, 10000))
        << qPrintable(names().join(u' '));
    EXPECT_EQ(desk.colourModes, QList<int>{4});
    EXPECT_TRUE(desk.thumbnails.isEmpty());
    click("Pdf");
    ASSERT_TRUE(closes());
    ASSERT_EQ(pdfs().size(), 1);
    EXPECT_EQ(desk.documents, QStringList{path(pdfs()[0].toUtf8().constData())});
    EXPECT_FALSE(desk.documentIcons[0].isNull());
    EXPECT_TRUE(QFile::exists(path("b.png"))) << "the files stay";
    open();
    EXPECT_TRUE(dialog.pages().isEmpty()) << "every opening starts anew";
    ASSERT_TRUE(tools::areInstalled()) << "needs the packages qpdf and poppler-utils";
    const std::string pdf = folder.file(pdfs()[0].toStdString());
    EXPECT_EQ(tools::pageSizes(pdf).size(), 3U);
    EXPECT_GT(tools::rendered(pdf, 2).at<cv::Vec3b>(3, 3)[1], 200) << "the green one is the second";
}

TEST_F(PdfExTest, TheListGivesTheOrderOfThePages)
{
    open();
    for (const char* name : {"a.png", "b.png", "c.png"})
        dialog.SetScannerImage(save(name));
    auto* list = dialog.findChild<QListWidget*>();
    EXPECT_EQ(list->dragDropMode(), QAbstractItemView::InternalMove);
    dialog.findChild<Thumbnail*>()->onMoveUp();
    QTest::keyClick(dialog.findChild<Thumbnail*>(), Qt::Key_Home);
    QTest::keyClick(dialog.findChild<Thumbnail*>(), Qt::Key_Delete);
    EXPECT_EQ(names(), (QStringList{QStringLiteral("c.png"), QStringLiteral("b.png")}));
    EXPECT_TRUE(QFile::exists(path("a.png")));
}

TEST_F(PdfExTest, ManyFilesAreAllListedBeforeThePdfIsMade)
{
    open();
    for (int i = 0; i < 150; ++i)
        answers.chosenFiles << save(QStringLiteral("page%1.png").arg(i).toLatin1().constData());
    click("AddImages");
    EXPECT_EQ(dialog.pages(), answers.chosenFiles);
    click("Pdf");
    ASSERT_TRUE(closes());
    ASSERT_EQ(pdfs().size(), 1);
    ASSERT_TRUE(tools::areInstalled()) << "needs the packages qpdf and poppler-utils";
    EXPECT_EQ(tools::pageSizes(folder.file(pdfs()[0].toStdString())).size(), 150U);
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
    ConfigSettings store;
    settings::setSavePath(store, path("no folder"));
    pressPdf();
    EXPECT_TRUE(dialog.isVisible() && !note().isEmpty() && answers.messages.isEmpty());
    EXPECT_EQ(dialog.pages(), QStringList{path("a.png")});
    EXPECT_TRUE(desk.documents.isEmpty()) << "there is no file";
    EXPECT_FALSE(QFile::exists(path("no folder"))) << "it is not made here";
    Dialogs::instance().openUrl = [](const QUrl&) { return false; };
    click("Open-path");
    EXPECT_TRUE(note().contains(path("no folder"))) << qPrintable(note());
}

TEST_F(PdfExTest, AnUnreadablePageIsNamedAndTheListStays)
{
    open();
    for (const char* name : {"a.png", "b.png", "c.png"})
        dialog.SetScannerImage(save(name, Qt::green));
    folder.write("b.png", "broken meanwhile");
    pressPdf();
    EXPECT_TRUE(note().contains(QStringLiteral("b.png"))) << qPrintable(note());
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(names().join(u' '), QStringLiteral("a.png b.png c.png"));
    EXPECT_TRUE(pdfs().isEmpty() && desk.documents.isEmpty());
    save("b.png");
    pressPdf();
    ASSERT_EQ(pdfs().size(), 1);
    ASSERT_TRUE(tools::areInstalled()) << "needs the packages qpdf and poppler-utils";
    EXPECT_EQ(tools::pageSizes(folder.file(pdfs()[0].toStdString())).size(), 3U)
        << "no page of the first try";
}

TEST_F(PdfExTest, WhatCannotBeAPageIsNamedAndTheListStays)
{
    open();
    dialog.SetScannerImage(save("a.bmp"));
    EXPECT_TRUE(note().contains(QStringLiteral("a.bmp"))) << "said at once";
    pressPdf();
    EXPECT_TRUE(note().contains(QStringLiteral("a.bmp")));
    EXPECT_TRUE(pdfs().isEmpty() && desk.documents.isEmpty());
    dialog.SetScannerImage(save("b.png"));
    pressPdf();
    EXPECT_TRUE(note().contains(QStringLiteral("a.bmp"))) << qPrintable(note());
    EXPECT_FALSE(note().contains(QStringLiteral("b.png")));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(names().join(u' '), QStringLiteral("a.bmp b.png"));
    ASSERT_EQ(pdfs().size(), 1);
    EXPECT_EQ(desk.documents, QStringList{path(pdfs()[0].toUtf8().constData())});
}

TEST_F(PdfExTest, StaysOpenWhileThePdfIsWritten)
{
    open();
    dialog.SetScannerImage(save("a.png"));
    click("Pdf");
    dialog.close(); // before the event loop has brought the result
    EXPECT_TRUE(dialog.isVisible());
    click("Pdf"); // no second one
    ASSERT_TRUE(closes());
    EXPECT_EQ(desk.documents.size(), 1);
}

TEST_F(PdfExTest, CancelledItLeavesNoFileAndTheListAndCanBeginAgain)
{
    open();
    for (int i = 0; i < 60; ++i)
        dialog.SetScannerImage(save(QStringLiteral("page%1.png").arg(i).toLatin1().constData()));
    auto* cancel = dialog.findChild<QPushButton*>(QStringLiteral("buttonCancelJob"));
    ASSERT_NE(cancel, nullptr);
    click("Pdf");
    cancel->click(); // whether it shows already or not
    EXPECT_FALSE(cancel->isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !note().isEmpty(); }));
    EXPECT_TRUE(note().startsWith(QStringLiteral("Cancelled")));
    EXPECT_EQ(entries(), 60) << "no PDF, whole or half";
    EXPECT_EQ(dialog.pages().size(), 60);
    EXPECT_TRUE(desk.documents.isEmpty());
    click("Pdf");
    ASSERT_TRUE(closes());
    ASSERT_TRUE(tools::areInstalled()) << "needs the packages qpdf and poppler-utils";
    EXPECT_EQ(tools::pageSizes(desk.documents.value(0).toStdString()).size(), 60U);
}

TEST_F(PdfExTest, CanGoWhileThePdfIsWritten)
{
    {
        PdfEx other(nullptr, desk.camera);
        other.SetScannerImage(save("a.png"));
        other.onPdfEx();
    }
    EXPECT_LE(pdfs().size(), 1); // was it quicker?
    EXPECT_EQ(entries(), 1 + pdfs().size()) << "something half is left";
    PdfEx unused(nullptr, desk.camera);
    EXPECT_TRUE(unused.close());
}

TEST_F(PdfExTest, ShowsTheNewestFrame)
{
    QImage frame(64, 48, QImage::Format_RGB888);
    dialog.SetPdfDataframe(frame); // not shown yet: dropped
    open();
    auto* preview = dialog.findChild<QWidget*>(QStringLiteral("preview"));
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
    ConfigSettings store;
    settings::deskew.write(store, 1);
    settings::imageFormat.write(store, 1);
    EXPECT_EQ(dialog.imageSave(image, 3), path("IMAGE_000.png"));
    const QImage cut(path("IMAGE_000.png"));
    EXPECT_EQ(cut.size(), QSize(70, 50));
    EXPECT_NEAR(cut.dotsPerMeterX(), 8464, 1);
    EXPECT_TRUE(dialog.imageSave(QImage(), 0).isEmpty());
}

TEST_F(PdfExTest, FitsInEveryLanguage)
{
    for (const char* language : {"en", "zh_cn", "ru"}) {
        QTranslator translator;
        ASSERT_TRUE(translator.load(
            QStringLiteral(TRANSLATIONS_FOLDER "/lumroscanner_%1.qm").arg(QLatin1String(language))));
        QCoreApplication::installTranslator(&translator);
        PdfEx translated(nullptr, desk.camera);
        translated.show();
        translated.resize(translated.minimumSizeHint());
        QCoreApplication::processEvents();
        EXPECT_LE(translated.width(), 800) << language;
        for (const auto* button : translated.findChildren<QPushButton*>()) {
            EXPECT_TRUE(!button->isVisible() || button->width() >= button->sizeHint().width())
                << language << qPrintable(button->text());
        }
        translated.close();
        QCoreApplication::removeTranslator(&translator);
    }
}

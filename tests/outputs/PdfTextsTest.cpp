// PDF files get the text of their pictures, behind the user's back and never at the cost of the file.
#include "PdfTexts.h"

#include "../pdf/PdfTools.h"
#include "../ui/AnsweredDialogs.h"
#include "OutputFixture.h"
#include "Part.h"
#include "PdfEx.h"
#include "PdfExControl.h"
#include "PdfScan.h"
#include "PdfSynthesis.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QFileDialog>
#include <QPainter>
#include <QPushButton>
#include <QTest>

using testing::HasSubstr;

namespace {

class PdfTextsTest : public OutputTest
{
protected:
    PdfTextsTest()
    {
        settings::pdfText.write(settings, true);
        page = save("page.png", printed(QStringLiteral("Friday and Sunday.")));
        QImage paper(600, 400, QImage::Format_RGB32);
        paper.fill(Qt::white);
        blank = save("blank.png", paper);
    }
    /// The PDF of a scan that gives these pictures.
    QString scan(const QStringList& pictures)
    {
        desk.savesAs = pictures;
        desk.pagesInShot = pictures.size();
        PdfScan(desk, desk.camera, *texts).scan();
        return desk.documents.isEmpty() ? QString() : desk.documents.last();
    }
    bool ends() const
    {
        return QTest::qWaitFor([this] { return !texts->isRunning(); }, 120000);
    }
    static std::string text(const QString& pdf) { return tools::linesOf(pdf.toStdString()); }
    static std::string bytes(const QString& path) { return TempDir::contentOf(path.toStdString()); }
    void use(const QString& models) { texts = std::make_unique<PdfTexts>(desk, desk.camera, models); }
    QString lastNotice() const { return desk.notices.value(desk.notices.size() - 1); }

    QString page, blank;
    std::unique_ptr<PdfTexts> texts =
        std::make_unique<PdfTexts>(desk, desk.camera, QStringLiteral(OCR_MODELS));
};

} // namespace

TEST_F(PdfTextsTest, AScanIsAPdfAtOnceAndHasItsTextALittleLater)
{
    const QString pdf = scan({page, blank});
    const std::string before = bytes(pdf);
    EXPECT_TRUE(texts->isRunning() && desk.jobs.size() == 1) << "and it is shown";
    EXPECT_EQ(text(pdf), "\f\f") << "the PDF is there already";
    const QString second = scan({page}); // waits for the first
    // Pictures that go, and others of their name, change nothing any more.
    QFile::remove(page);
    save("page.png", Qt::red);
    ASSERT_TRUE(ends());
    for (const QString& made : {pdf, second}) {
        EXPECT_EQ(tools::complaints(made.toStdString()), "");
        EXPECT_EQ(text(made).rfind("The harbour office is closed on\nFriday and Sunday.\n", 0), 0U)
            << text(made);
    }
    EXPECT_EQ(tools::pageSizes(pdf.toStdString()).size(), 2U) << "a page without text is no trouble";
    EXPECT_LT(double(bytes(pdf).size()), double(before.size()) + 4000) << "the text takes next to nothing";
    EXPECT_EQ(desk.jobs.size(), 2);
    EXPECT_TRUE(desk.job.expired() && desk.notices.isEmpty());
    EXPECT_EQ(files("*").size(), 4) << "nothing else is left";

    settings::pdfText.write(settings, false);
    const QString plain = scan({blank});
    EXPECT_FALSE(texts->isRunning());
    EXPECT_EQ(desk.jobs.size(), 2);
}

TEST_F(PdfTextsTest, CancelledOrAtTheProgramsEndThePdfStaysWholeAndWithoutText)
{
    save("page.png", printed(QStringLiteral("Friday.")).scaled(1800, 600));
    desk.whenShown = [](Job& job) { job.stop(); };
    const QString pdf = scan({page, page});
    const std::string before = bytes(pdf);
    ASSERT_TRUE(ends());
    EXPECT_EQ(bytes(pdf), before);
    EXPECT_TRUE(lastNotice().startsWith(QStringLiteral("Cancelled"))) << qPrintable(lastNotice());

    desk.whenShown = nullptr;
    const QString later = scan({page, page, page});
    ASSERT_TRUE(QTest::qWaitFor([&] { return desk.jobProgress() > 0.4; }, 60000)); // the second page
    desk.cancelJob();
    ASSERT_TRUE(ends());
    EXPECT_EQ(text(later), "\f\f\f");

    const QStringList two{scan({page, page}), scan({page})};
    texts.reset(); // while the first is read and the other waits
    QCoreApplication::processEvents();
    for (const QString& kept : two) {
        EXPECT_EQ(tools::complaints(kept.toStdString()), "");
        EXPECT_EQ(text(kept).find("harbour"), std::string::npos);
    }
    EXPECT_EQ(files("*").size(), 6) << "nothing half";
}

TEST_F(PdfTextsTest, WhatFailsIsToldAndThePdfStays)
{
    const auto expectUnchanged = [&](const QString& pdf, const char* told) {
        const std::string before = bytes(pdf);
        ASSERT_TRUE(ends());
        EXPECT_EQ(bytes(pdf), before) << told;
        EXPECT_TRUE(lastNotice().contains(QLatin1String(told))) << qPrintable(lastNotice());
    };
    expectUnchanged(scan({blank}), "No text");
    use(path("no models"));
    expectUnchanged(scan({page}), "could not be recognised");
    use(QStringLiteral(OCR_MODELS));

    const QString gone = scan({page});
    QFile::remove(gone);
    ASSERT_TRUE(ends());
    EXPECT_FALSE(QFile::exists(gone)) << "what the user has deleted stays so";
    EXPECT_TRUE(lastNotice().contains(QStringLiteral("changed")));
    const QString other = scan({page});
    QFile::remove(other);
    folder.write(QFileInfo(other).fileName().toStdString(), "another program's");
    ASSERT_TRUE(ends());
    EXPECT_EQ(bytes(other), "another program's");
    EXPECT_EQ(files("*.tmp").size(), 0);

    const QString pdf = scan({page, blank});
    QFile picture(page); // written in place, while it is read: as long as it was, only later
    ASSERT_TRUE(picture.open(QIODevice::ReadWrite));
    picture.write(picture.peek(1));
    picture.close();
    expectUnchanged(pdf, "changed");
}

TEST_F(PdfTextsTest, TheDialogOfSeveralPagesHasBothChoicesAndHandsItsPdfOver)
{
    settings::pdfText.write(settings, false);
    QWidget window;
    PdfEx dialog(&window, desk.camera);
    PdfExControl control(desk, dialog, *texts);
    settings::pdfArchive.write(settings, true); // meanwhile, in the menu
    control.open(&dialog, 1600, 1200, 0, 1);
    auto* text = part<QCheckBox>(dialog, "checkText");
    auto* archive = part<QCheckBox>(dialog, "checkArchive");
    EXPECT_FALSE(text->isChecked());
    EXPECT_TRUE(archive->isChecked());
    text->setFocus();
    QTest::keyClick(text, Qt::Key_Space);
    EXPECT_TRUE(settings::pdfText.read());
    dialog.SetScannerImage(blank);
    dialog.SetScannerImage(page);
    QTest::mouseClick(part<QPushButton>(dialog, "Pdf"), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
    ASSERT_EQ(desk.documents.size(), 1);
    EXPECT_TRUE(texts->isRunning()) << "the dialog does not wait for it";
    ASSERT_TRUE(ends());
    const std::string pdf = desk.documents[0].toStdString();
    EXPECT_EQ(tools::textOf(pdf, "-f 2").rfind("The harbour office", 0), 0U);
    EXPECT_EQ(tools::pageSizes(pdf).size(), 2U);
    EXPECT_THAT(tools::run("pdfinfo -meta '" + pdf + "'"), HasSubstr("<pdfaid:part>2"));
    EXPECT_THAT(tools::run("pdfinfo '" + pdf + "'"),
                HasSubstr("Title:           " +
                          QFileInfo(desk.documents[0]).completeBaseName().toStdString() + "\n"));
    archive->click();
    EXPECT_FALSE(settings::pdfArchive.read());
}

TEST_F(PdfTextsTest, APdfOfChosenFilesKeepsItsSheetsAndReplacesWhatWasChosen)
{
    const QString target = QString::fromStdString(folder.write("合同.pdf", "before"));
    AnsweredDialogs answers;
    Dialogs::instance().chooseFiles = [&](QFileDialog&) { return QStringList{target}; };
    QWidget window;
    PdfSynthesis synthesis(desk, window, desk.camera, *texts);
    ASSERT_TRUE(synthesis.drawImageToPDF({page}));
    EXPECT_EQ(tools::complaints(target.toStdString()), "") << "at once";
    ASSERT_TRUE(ends());
    EXPECT_EQ(text(target).rfind("The harbour office", 0), 0U);
    EXPECT_THAT(tools::pageSizes(target.toStdString()), testing::ElementsAre("842 x 595"));
    const auto word = tools::wordsOf(target.toStdString()).at(0);
    const double scale = 782.0 / 900; // as wide as the room between the margins
    EXPECT_NEAR(word.box.x, 30 + 80 * scale, 4);
    EXPECT_NEAR(word.box.y + word.box.height, 30 + 100 * scale, 3) << "on the line's feet";

    // Without text, but for an archive; what cannot be read ends it as ever.
    settings::pdfText.write(settings, false);
    settings::pdfArchive.write(settings, true);
    const QString broken = QString::fromStdString(folder.write("broken.png", "no picture"));
    EXPECT_FALSE(synthesis.drawImageToPDF({page, blank, broken, page}));
    EXPECT_EQ(tools::pageSizes(target.toStdString()).size(), 2U) << "the pages before it";
    EXPECT_THAT(tools::run("pdfinfo -meta '" + target.toStdString() + "'"), HasSubstr("<pdfaid:part>2"));
    const std::string held = bytes(target);
    EXPECT_FALSE(synthesis.drawImageToPDF({broken, page}));
    desk.whenShown = [](Job& job) { job.stop(); };
    QStringList many; // so that they are not done before they are stopped
    for (int i = 0; i < 200; ++i)
        many << page;
    EXPECT_FALSE(synthesis.drawImageToPDF(many));
    EXPECT_EQ(bytes(target), held);
    EXPECT_FALSE(texts->isRunning());
    EXPECT_EQ(files("*").size(), 4);
}

TEST_F(PdfTextsTest, WordsOfColumnsComeInOrderAndEachLineIsCoveredWithinTwoMillimetres)
{
    const QStringList left{QStringLiteral("The ferryman kept a ledger of"),
                           QStringLiteral("every person whom he rowed"),
                           QStringLiteral("across the river, with the"),
                           QStringLiteral("fare in pence and the state"),
                           QStringLiteral("of the tide, for thirty years."),
                           QStringLiteral("Nobody had told him to.")};
    const QStringList right{QStringLiteral("When the bridge was opened"),
                            QStringLiteral("there was no more need for"),
                            QStringLiteral("a ferry. The last volume ends"),
                            QStringLiteral("on a Tuesday with calm water"),
                            QStringLiteral("and a light wind from the"),
                            QStringLiteral("west, and nothing after it.")};
    constexpr int dpi = 150, pitch = 40, top = 120;
    QImage sheet(1240, 500, QImage::Format_RGB32); // A4 is as wide
    sheet.fill(Qt::white);
    sheet.setDotsPerMeterX(int(dpi / 0.0254));
    sheet.setDotsPerMeterY(int(dpi / 0.0254));
    QFont font(QStringLiteral("DejaVu Serif"));
    font.setPixelSize(27);
    QPainter painter(&sheet);
    painter.setFont(font);
    QVector<QRectF> lines; // points
    for (int i = 0; i < left.size(); ++i) {
        for (const auto& [x, line] : {std::pair(110, left[i]), std::pair(680, right[i])}) {
            const QPointF at(x, top + pitch * i);
            painter.drawText(at, line);
            const QRectF ink = QFontMetricsF(font, &sheet).tightBoundingRect(line).translated(at);
            lines << QTransform::fromScale(72.0 / dpi, 72.0 / dpi).mapRect(ink);
        }
    }
    painter.end();
    const QString pdf = scan({save("columns.png", sheet)});
    ASSERT_TRUE(ends());
    EXPECT_EQ(QString::fromStdString(tools::textOf(pdf.toStdString(), "-raw")).simplified(),
              (left + right).join(QLatin1Char(' ')))
        << "column by column, as people read";
    QStringList across;
    for (int i = 0; i < left.size(); ++i)
        across << left[i] << right[i];
    EXPECT_EQ(QString::fromStdString(tools::textOf(pdf.toStdString(), "-layout")).simplified(),
              across.join(QLatin1Char(' ')))
        << "as the page looks";
    const auto words = tools::wordsOf(pdf.toStdString());
    for (const QRectF& line : lines) {
        QRectF marked;
        for (const tools::SeenWord& word : words) {
            const QRectF box(word.box.x, word.box.y, word.box.width, word.box.height);
            if (line.contains(box.center()))
                marked |= box;
        }
        constexpr double twoMillimetres = 2 * 72 / 25.4;
        EXPECT_NEAR(marked.left(), line.left(), twoMillimetres);
        EXPECT_NEAR(marked.right(), line.right(), twoMillimetres);
        EXPECT_NEAR(marked.top(), line.top(), twoMillimetres);
        EXPECT_NEAR(marked.bottom(), line.bottom(), twoMillimetres);
    }
}

#include "PdfScan.h"

#include "../pdf/PdfTools.h"
#include "DiskFullAt.h"
#include "OutputFixture.h"
#include "PdfFile.h"
#include "PdfTexts.h"

namespace {

class PdfScanTest : public OutputTest
{
protected:
    PdfScanTest() { desk.savesAs << picture; }
    QStringList pdfs() const { return files("*.pdf"); }
    void expectOnlyThePicture(const char* what)
    {
        EXPECT_TRUE(pdfs().isEmpty()) << what;
        EXPECT_TRUE(desk.documents.isEmpty()) << what;
    }

    const QString picture = save("扫描_000.png", Qt::white);
    PdfTexts texts{desk, desk.camera, QStringLiteral(OCR_MODELS)};
    PdfScan pdf{desk, desk.camera, texts};
};

} // namespace

TEST_F(PdfScanTest, MakesACaptureAndAPdfOfItBeside)
{
    settings::scanType.write(settings, 3);
    const QDateTime before = QDateTime::currentDateTime();
    pdf.scan();
    ASSERT_EQ(pdfs().size(), 1);
    EXPECT_EQ(desk.thumbnails, QStringList{picture});
    EXPECT_EQ(desk.documents, QStringList{path() + QLatin1Char('/') + pdfs()[0]});
    EXPECT_FALSE(desk.documentIcons[0].isNull());
    EXPECT_EQ(desk.colourModes, QList<int>{3});
    EXPECT_TRUE(desk.notices.isEmpty());
    const QDateTime named = QDateTime::fromString(pdfs()[0], QStringLiteral("yyyyMMddhhmmss'.pdf'"));
    EXPECT_LE(qAbs(named.secsTo(before)), 2);
    EXPECT_EQ(folder.content(pdfs()[0].toStdString()).rfind("%PDF-1.", 0), 0U);
}

TEST_F(PdfScanTest, EveryPageOfOneShotIsAPage)
{
    desk.pagesInShot = 2;
    const QString other = save("other.png");
    desk.savesAs << other;
    pdf.scan();
    ASSERT_EQ(pdfs().size(), 1);
    EXPECT_EQ(desk.thumbnails, (QStringList{picture, other}));
    EXPECT_EQ(tools::pageSizes(folder.file(pdfs()[0].toStdString())).size(), 2U);
}

TEST_F(PdfScanTest, ManyWithinASecondAreAllKept)
{
    for (int i = 0; i < 5; ++i) {
        desk.savesAs = QStringList{picture};
        pdf.scan();
    }
    EXPECT_EQ(pdfs().size(), 5);
    EXPECT_EQ(QSet<QString>(desk.documents.begin(), desk.documents.end()).size(), 5);
    // The name that was free is taken by the time the file is written.
    const QString taken = QString::fromStdString(folder.write("a_1.pdf", "another program's"));
    const pdfFile::Result result = pdfFile::write(desk.camera, {picture}, taken);
    EXPECT_EQ(result.path, path("a_2.pdf"));
    EXPECT_EQ(result.code, MIRVAK_OK);
    EXPECT_GT(QFileInfo(result.path).size(), QFileInfo(taken).size());
    EXPECT_EQ(QFileInfo(taken).size(), 17);
}

TEST_F(PdfScanTest, WithoutLeaveOrAPictureThatCanBeAPageThereIsNoPdf)
{
    desk.allowed = false;
    pdf.scan();
    EXPECT_EQ(desk.framesTaken, 0);
    desk.allowed = true;
    desk.frameComes = false;
    pdf.scan();
    expectOnlyThePicture("no frame");
    EXPECT_EQ(desk.notices.size(), 1);
    desk.frameComes = true;
    desk.savesAs.clear();
    pdf.scan();
    expectOnlyThePicture("nothing saved");

    desk.savesAs << QString::fromStdString(folder.write("broken.jpg", "no picture"));
    pdf.scan();
    expectOnlyThePicture("a page that is none");
    EXPECT_EQ(desk.notices.size(), 2);
    EXPECT_EQ(desk.thumbnails.size(), 1);
    desk.savesAs << picture;
    {
        const DiskFullAt limit(100);
        pdf.scan();
    }
    expectOnlyThePicture("a full disk");
    EXPECT_EQ(desk.notices.size(), 3);
}

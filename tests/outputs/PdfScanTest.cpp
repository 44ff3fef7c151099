#include "PdfScan.h"

#include "../pdf/PdfTools.h"
#include "DiskFullAt.h"
#include "FakeDesk.h"
#include "PdfFile.h"
#include "Settings.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QRegularExpression>

namespace {

class PdfScanTest : public ::testing::Test
{
protected:
    PdfScanTest()
    {
        QImage page(40, 30, QImage::Format_RGB32);
        page.fill(Qt::white);
        EXPECT_TRUE(page.save(picture));
        desk.savesAs << picture;
    }
    ~PdfScanTest() override { ConfigSettings().GetSettings()->clear(); }

    QStringList pdfs() const
    {
        return QDir(QString::fromStdString(folder.path())).entryList({QStringLiteral("*.pdf")});
    }
    void expectOnlyThePicture(const char* what)
    {
        EXPECT_TRUE(pdfs().isEmpty()) << what;
        EXPECT_TRUE(desk.documents.isEmpty()) << what;
    }

    const TempDir folder;
    const QString picture = QString::fromStdString(folder.file("扫描_000.png"));
    FakeDesk desk;
    PdfScan pdf{desk, desk.camera};
};

} // namespace

TEST_F(PdfScanTest, MakesACaptureAndAPdfOfItBeside)
{
    ConfigSettings store;
    settings::scanType.write(store, 3);
    const QDateTime before = QDateTime::currentDateTime();
    pdf.scan();
    ASSERT_EQ(pdfs().size(), 1);
    const QString path = QString::fromStdString(folder.file(pdfs()[0].toStdString()));
    EXPECT_EQ(desk.thumbnails, QStringList{picture});
    EXPECT_EQ(desk.documents, QStringList{path});
    EXPECT_FALSE(desk.documentIcons[0].isNull());
    EXPECT_EQ(desk.colourModes, QList<int>{3});
    EXPECT_TRUE(desk.notices.isEmpty());
    const QDateTime named = QDateTime::fromString(pdfs()[0], QStringLiteral("yyyyMMddhhmmss'.pdf'"));
    EXPECT_LE(qAbs(named.secsTo(before)), 2);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.read(8).startsWith("%PDF-1."));
}

TEST_F(PdfScanTest, EveryPageOfOneShotIsAPage)
{
    desk.pagesInShot = 2;
    const QString other = QString::fromStdString(folder.file("other.png"));
    ASSERT_TRUE(QFile::copy(picture, other));
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
    EXPECT_EQ(result.path, QString::fromStdString(folder.file("a_2.pdf")));
    EXPECT_EQ(result.code, MIRVAK_OK);
    EXPECT_GT(QFileInfo(result.path).size(), QFileInfo(taken).size());
    EXPECT_EQ(QFileInfo(taken).size(), 17);
}

TEST_F(PdfScanTest, DoesNothingWithoutLeaveOrPicture)
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
}

TEST_F(PdfScanTest, AFailureKeepsThePictureAndIsSaid)
{
    folder.write("broken.jpg", "no picture");
    desk.savesAs[0] = QString::fromStdString(folder.file("broken.jpg"));
    pdf.scan();
    expectOnlyThePicture("a page that is none");
    EXPECT_EQ(desk.notices.size(), 1);
    EXPECT_EQ(desk.thumbnails.size(), 1);
    desk.savesAs << picture;
    {
        const DiskFullAt limit(100);
        pdf.scan();
    }
    expectOnlyThePicture("a full disk");
    EXPECT_EQ(desk.notices.size(), 2);
}

#include "PdfSynthesis.h"

#include "../pdf/PdfTools.h"
#include "../ui/AnsweredDialogs.h"
#include "OutputFixture.h"
#include "PdfTexts.h"
#include "PictureBytes.h"
#include "PictureCoding.h"

#include <QCoreApplication>
#include <QDate>
#include <QFileDialog>
#include <QPainter>
#include <QRandomGenerator>
#include <QTimer>

#include <cmath>

namespace {

/// Coloured letters and lines on paper, with as much noise as asked: levels up and down.
QImage page(const QSize& size, int noise)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(250, 248, 240));
    QPainter painter(&image);
    for (int i = 0; i < size.height(); i += 14) {
        painter.setPen(QPen(QColor::fromHsv(i * 7 % 360, 255, 200), 2));
        painter.drawLine(10, i, size.width() - 10 - i % 50, i + 5);
    }
    painter.end();
    QRandomGenerator random(1);
    for (int y = 0; y < image.height() && noise > 0; ++y) {
        auto* bytes = image.scanLine(y);
        for (int i = 0; i < image.width() * 4; ++i)
            bytes[i] = uchar(qBound(0, bytes[i] + random.bounded(-noise, noise + 1), 255));
    }
    return image;
}

double decibels(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return 0;
    const QImage one = a.convertToFormat(QImage::Format_RGB888);
    const QImage other = b.convertToFormat(QImage::Format_RGB888);
    double sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int i = 0; i < a.width() * 3; ++i) {
            const int apart = one.constScanLine(y)[i] - other.constScanLine(y)[i];
            sum += apart * apart;
        }
    }
    return sum == 0 ? 99 : 10 * std::log10(255 * 255 * 3.0 * a.width() * a.height() / sum);
}

class PdfSynthesisTest : public OutputTest
{
protected:
    PdfSynthesisTest()
    {
        settings::setSavePath(settings, path("scans"));
        Dialogs::instance().chooseFiles = [this](QFileDialog& dialog) {
            if (dialog.acceptMode() == QFileDialog::AcceptSave) {
                saveCaption = dialog.windowTitle();
                saveFolder = dialog.directory().path();
                return target.isEmpty() ? QStringList() : QStringList{target};
            }
            ++timesAsked;
            filters = dialog.nameFilters();
            dialogSize = dialog.size();
            openFolder = dialog.directory().path();
            return pictures;
        };
        window.resize(901, 700);
    }
    std::string written() const { return target.toStdString(); }

    AnsweredDialogs answers;
    QStringList pictures;
    QString target = path("合同.pdf");
    int timesAsked = 0;
    QStringList filters;
    QSize dialogSize;
    QString saveCaption, openFolder, saveFolder;
    QWidget window;
    PdfTexts texts{desk, desk.camera, QStringLiteral(OCR_MODELS)};
    PdfSynthesis synthesis{desk, window, desk.camera, texts};
};

} // namespace

TEST_F(PdfSynthesisTest, AsksWritesListsAndOffersTheFolder)
{
    pictures = QStringList{save("a.jpg", page({800, 400}, 0)), save("b.bmp", page({300, 500}, 0))};
    answers.pressedButton = QMessageBox::Open;
    synthesis.SynthesizePdf();
    EXPECT_EQ(filters, QStringList{QStringLiteral("Image files(*.jpg *.png *.bmp)")});
    EXPECT_EQ(dialogSize, QSize(450, 350));
    EXPECT_EQ(saveCaption, QStringLiteral("Save PDF path"));
    EXPECT_EQ(openFolder + saveFolder, path("scans").repeated(2));
    EXPECT_EQ(answers.messages, QStringList{QStringLiteral("PDF|Do you want to open the PDF directory?")});
    EXPECT_EQ(answers.opened, QStringList{path()});
    EXPECT_EQ(desk.documents, QStringList{target});
    EXPECT_EQ(synthesis.lastPath(), target);
    EXPECT_EQ(tools::complaints(written()), "");
    EXPECT_EQ(tools::pageSizes(written()), (std::vector<std::string>{"842 x 595", "842 x 595"}))
        << "lying A4, no empty page behind the last";
}

TEST_F(PdfSynthesisTest, PicturesLieTopLeftAsLargeAsFitsAndLookAsTheyWere)
{
    ASSERT_TRUE(synthesis.drawImageToPDF({save("red.png", QColor(Qt::red), nullptr, {400, 400})}));
    const cv::Mat seen = tools::rendered(written());
    ASSERT_EQ(seen.size(), cv::Size(842, 595));
    // Margins of 30 points; the printable height is 535.
    const auto isRed = [&](int x, int y) {
        const auto pixel = seen.at<cv::Vec3b>(y, x);
        return pixel[0] > 200 && pixel[1] < 60;
    };
    EXPECT_TRUE(isRed(32, 32) && isRed(562, 562) && isRed(562, 32));
    EXPECT_FALSE(isRed(28, 300) || isRed(300, 28) || isRed(568, 300) || isRed(300, 568));

    QImage lying(400, 200, QImage::Format_RGB32);
    lying.fill(Qt::white);
    QPainter(&lying).fillRect(0, 0, 200, 200, Qt::red);
    QFile jpeg(save("turned.jpg", lying, nullptr, 100));
    ASSERT_TRUE(jpeg.open(QIODevice::ReadWrite));
    const QByteArray bytes = jpeg.readAll();
    const mirvak::Bytes turned = withOrientation({bytes.begin(), bytes.end()}, 6);
    jpeg.seek(0);
    jpeg.write(reinterpret_cast<const char*>(turned.data()), qint64(turned.size()));
    jpeg.close();
    ASSERT_TRUE(synthesis.drawImageToPDF({jpeg.fileName()}));
    const cv::Mat upright = tools::rendered(written());
    EXPECT_LT(upright.at<cv::Vec3b>(250, 280)[1], 60) << "red above, as the camera was held";
    EXPECT_GT(upright.at<cv::Vec3b>(320, 280)[1], 200);

    pictures = QStringList{save("drawn.png", page({900, 800}, 0)),
                           save("noisy.png", page({700, 500}, 25)),
                           save("camera.jpg", page({1100, 700}, 3), nullptr, 95)};
    ASSERT_TRUE(synthesis.drawImageToPDF(pictures));
    const TempDir taken;
    tools::run("pdfimages -png '" + written() + "' '" + taken.file("p") + "'");
    for (int i = 0; i < pictures.size(); ++i) {
        const QImage out(QString::fromStdString(taken.file("p-00" + std::to_string(i) + ".png")));
        EXPECT_GE(decibels(QImage(pictures[i]), out), 42) << qPrintable(pictures[i]);
    }
}

TEST(PictureCoding, TellsWhatTheWritersJpegWouldSpoil)
{
    QImage drawn = page({1900, 1700}, 25);
    EXPECT_FALSE(pictureCoding::survivesJpeg(drawn));
    QPainter(&drawn).fillRect(0, 0, 1000, 1700, Qt::white);
    EXPECT_FALSE(pictureCoding::survivesJpeg(drawn)) << "the half of it";
    QImage grained(1000, 800, QImage::Format_RGB32); // comes back at 37 dB
    QRandomGenerator random(1);
    for (int y = 0; y < grained.height(); ++y)
        for (int x = 0; x < grained.width(); ++x)
            grained.setPixel(x, y, qRgb(120 + random.bounded(20), 120, 120 + random.bounded(20)));
    EXPECT_FALSE(pictureCoding::survivesJpeg(grained));
    QImage grey(3000, 200, QImage::Format_RGB32);
    for (int y = 0; y < grey.height(); ++y)
        for (int x = 0; x < grey.width(); ++x)
            grey.setPixel(x, y, qRgb(x / 12, x / 12, x / 12));
    EXPECT_TRUE(pictureCoding::survivesJpeg(grey));
}

TEST_F(PdfSynthesisTest, WhatIsNotChosenOrCannotBeWrittenMakesNothing)
{
    synthesis.SynthesizePdf();
    EXPECT_EQ(timesAsked, 1);
    pictures = QStringList{save("a.png", page({30, 20}, 0))};
    target.clear();
    synthesis.SynthesizePdf();
    EXPECT_EQ(timesAsked, 2);
    EXPECT_TRUE(answers.messages.isEmpty() && desk.documents.isEmpty() && desk.notices.isEmpty());

    target = path("no folder/a.pdf");
    EXPECT_FALSE(synthesis.drawImageToPDF({save("a.png", page({30, 20}, 0))}));
    EXPECT_EQ(desk.notices.size(), 1);
    EXPECT_TRUE(synthesis.lastPath().isEmpty());
}

TEST_F(PdfSynthesisTest, MakesTheFolderOneLevelDeepOrDoesNothing)
{
    settings::createDirByDate.write(settings, true);
    synthesis.SynthesizePdf();
    EXPECT_EQ(timesAsked, 0) << "scans/DATE would need two levels";
    settings::createDirByDate.write(settings, false);
    synthesis.SynthesizePdf();
    EXPECT_EQ(timesAsked, 1);
    settings::createDirByDate.write(settings, true);
    synthesis.SynthesizePdf();
    EXPECT_EQ(timesAsked, 2);
    EXPECT_TRUE(QDir(path("scans") + QDate::currentDate().toString(QStringLiteral("/yyyyMMdd"))).exists());
}

TEST_F(PdfSynthesisTest, AnUnreadablePictureEndsTheWork)
{
    const QString good = save("good.png", page({30, 20}, 0));
    folder.write("broken.png", "no picture");
    pictures = QStringList{good, good, path("broken.png"), good};
    synthesis.SynthesizePdf();
    EXPECT_TRUE(answers.messages.isEmpty() && desk.documents.isEmpty());
    EXPECT_TRUE(desk.notices.value(0).startsWith(QStringLiteral("broken.png")));
    EXPECT_TRUE(synthesis.lastPath().isEmpty());
    for (const bool isArchive : {false, true}) {
        settings::pdfArchive.write(settings, isArchive);
        QFile::remove(target);
        synthesis.SynthesizePdf();
        EXPECT_EQ(tools::complaints(written()), "");
        EXPECT_EQ(tools::pageSizes(written()).size(), 2U) << isArchive;
    }
    settings::pdfArchive.write(settings, false);
    desk.notices = desk.notices.mid(0, 1);
    QFile::remove(target);
    EXPECT_FALSE(synthesis.drawImageToPDF({path("broken.png"), good}));
    EXPECT_FALSE(QFile::exists(target)) << "no empty page";
    EXPECT_TRUE(desk.notices.value(1).startsWith(QStringLiteral("broken.png")));
    settings::pdfText.write(settings, true);
    desk.jobs.clear();
    EXPECT_FALSE(synthesis.drawImageToPDF({good, path("broken.png")}));
    QCoreApplication::processEvents();
    EXPECT_EQ(desk.jobs, QStringList{QStringLiteral("The PDF is being written...")})
        << "no text is looked for that its pages do not get";
}

TEST_F(PdfSynthesisTest, CancelledAtAnyPageTheFileBeforeStaysAndTheWindowLives)
{
    const QString picture = save("a.jpg", page({800, 400}, 0));
    const QStringList three{picture, picture, picture};
    QStringList many; // so that they are not done before they are stopped
    for (int i = 0; i < 200; ++i)
        many << picture;
    folder.write("合同.pdf", "before");
    const QStringList entries = files();
    QTimer clicks; // which need the event loop, and see the job
    int stopAt = 0;
    bool isStartedTwice = false, hasLived = false;
    QObject::connect(&clicks, &QTimer::timeout, &clicks, [&] {
        const std::shared_ptr<Job> job = desk.job.lock();
        hasLived = job != nullptr;
        if (hasLived && !isStartedTwice) {
            isStartedTwice = true;
            EXPECT_FALSE(synthesis.drawImageToPDF(three));
            EXPECT_EQ(desk.notices.size(), 1) << "it says that one is being written";
        }
        if (job && job->done() >= stopAt)
            job->stop();
    });
    clicks.start(0);
    for (; stopAt < 3; ++stopAt) {
        hasLived = false;
        EXPECT_FALSE(synthesis.drawImageToPDF(many)) << stopAt;
        EXPECT_TRUE(hasLived);
        EXPECT_EQ(files(), entries);
        EXPECT_EQ(folder.content("合同.pdf"), "before");
        EXPECT_TRUE(desk.job.expired() && synthesis.lastPath().isEmpty());
        EXPECT_TRUE(desk.notices.last().startsWith(QStringLiteral("Cancelled")));
    }
    stopAt = 1000;
    EXPECT_TRUE(synthesis.drawImageToPDF(three));
    EXPECT_EQ(desk.jobProgress(), 1);
    EXPECT_EQ(tools::pageSizes(written()).size(), 3U);
    // The program's end cancels too.
    target = path("other.pdf");
    QTimer::singleShot(0, &clicks, [&] {
        QTimer::singleShot(0, &clicks, [] { QCoreApplication::exit(); });
        EXPECT_FALSE(synthesis.drawImageToPDF(many));
    });
    QCoreApplication::exec();
    EXPECT_EQ(files(), entries);
}

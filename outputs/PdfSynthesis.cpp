#include "PdfSynthesis.h"

#include "CaptureDesk.h"
#include "Dialogs.h"
#include "FileNaming.h"
#include "FolderOffer.h"
#include "NamedFiles.h"
#include "PdfFile.h"
#include "PictureCoding.h"
#include "Settings.h"

#include <QApplication>
#include <QDate>
#include <QFileDialog>
#include <QImageReader>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <cstdio>

namespace {

constexpr int dotsPerInch = 300;
constexpr int margin = 30; // points, the writer's own unit

struct WaitCursor
{
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

/// Upright, as the camera that took it was held; null when it cannot be read.
QImage read(const QString& path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    QImage picture = reader.read();
    if (picture.isNull())
        std::fprintf(stderr, "PDF page: %s: %s\n", qPrintable(path), qPrintable(reader.errorString()));
    return picture;
}

} // namespace

PdfSynthesis::PdfSynthesis(CaptureDesk& desk, QWidget& window, QObject* parent)
    : QObject(parent), desk_(desk), window_(window)
{
}

void PdfSynthesis::SynthesizePdf()
{
    ConfigSettings store;
    const QString folder = FileNaming(store).targetDirectory();
    if (folder.isEmpty())
        return;
    const QStringList pictures = choosePictures(folder);
    if (pictures.isEmpty() || !drawImageToPDF(pictures))
        return;
    offerFolder();
    desk_.addDocument(lastPath_, pdfFile::icon());
}

QStringList PdfSynthesis::choosePictures(const QString& folder)
{
    QFileDialog dialog(&window_);
    dialog.resize(window_.width() / 2, window_.height() / 2);
    dialog.setNameFilter(tr("Image files(*.jpg *.png *.bmp)"));
    // Where a folder a day is made this names it twice.
    const QString today =
        folder + QLatin1Char('/') + QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    dialog.setDirectory(QFileInfo(today).isDir() ? today : folder);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setViewMode(QFileDialog::List);
    return Dialogs::instance().chooseFiles(dialog);
}

QString PdfSynthesis::chooseTarget()
{
    ConfigSettings store;
    const QString folder = FileNaming(store).targetDirectory();
    QFileDialog dialog(&window_, tr("Save PDF path"), folder, tr("PDF(*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    return Dialogs::instance().chooseFiles(dialog).value(0);
}

bool PdfSynthesis::drawImageToPDF(const QStringList& images)
{
    const QString path = chooseTarget();
    if (path.isEmpty())
        return false;
    const WaitCursor wait;
    QSaveFile file(path);              // replaces a file of that name: the dialog has asked for that
    file.setDirectWriteFallback(true); // a folder without leave to write, a file with it
    const bool isOpen = file.open(QIODevice::WriteOnly);
    const int pages = isOpen ? drawPages(file, images) : 0;
    const QString unreadable = namedFiles(images.mid(pages, 1));
    if (isOpen && pages == 0 && !images.isEmpty()) {
        file.cancelWriting();
        desk_.showNotice(tr("%1 could not be read. No PDF was made.").arg(unreadable));
        return false;
    }
    if (!isOpen || !file.commit()) {
        std::fprintf(stderr, "PDF: %s: %s\n", qPrintable(path), qPrintable(file.errorString()));
        desk_.showNotice(tr("The PDF could not be written."));
        return false;
    }
    if (pages < images.size()) {
        desk_.showNotice(tr("%1 could not be read. The PDF holds the pages before it.").arg(unreadable));
        return false;
    }
    lastPath_ = path;
    return true;
}

int PdfSynthesis::drawPages(QIODevice& file, const QStringList& images)
{
    QPdfWriter writer(&file);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setResolution(dotsPerInch);
    writer.setPageMargins(QMarginsF(margin, margin, margin, margin));
    writer.setPageOrientation(QPageLayout::Landscape);
    QPainter painter(&writer);
    const QRect area = painter.viewport();
    for (int i = 0; i < images.size(); ++i) {
        const QImage picture = read(images[i]);
        if (picture.isNull())
            return i;
        if (i > 0)
            writer.newPage();
        drawPage(painter, area, picture);
        // The preview and the windows go on between the pages; clicks wait.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    return images.size();
}

void PdfSynthesis::drawPage(QPainter& painter, const QRect& area, const QImage& image)
{
    painter.setRenderHint(QPainter::LosslessImageRendering, !pictureCoding::survivesJpeg(image));
    const QPixmap picture = QPixmap::fromImage(image);
    const QSize size = picture.size().scaled(area.size(), Qt::KeepAspectRatio);
    painter.setViewport(area.x(), area.y(), size.width(), size.height());
    painter.setWindow(picture.rect());
    painter.drawPixmap(0, 0, picture);
}

void PdfSynthesis::offerFolder()
{
    const FolderOffer offer{tr("Tip"),
                            tr("PDF"),
                            tr("Do you want to open the PDF directory?"),
                            tr("Open PDF directory"),
                            tr("Finish")};
    offer.make(lastPath_);
}

#include "PdfSynthesis.h"

#include "CaptureDesk.h"
#include "Dialogs.h"
#include "FileNaming.h"
#include "FolderOffer.h"
#include "Job.h"
#include "NamedFiles.h"
#include "PdfFile.h"
#include "PdfTexts.h"
#include "Settings.h"
#include "Workers.h"

#include <QCoreApplication>
#include <QDate>
#include <QEventLoop>
#include <QFileDialog>
#include <QScopeGuard>

PdfSynthesis::PdfSynthesis(
    CaptureDesk& desk, QWidget& window, MirvakCamera& camera, PdfTexts& texts, QObject* parent)
    : QObject(parent), desk_(desk), window_(window), camera_(camera), texts_(texts)
{
}

void PdfSynthesis::SynthesizePdf()
{
    if (isWriting())
        return;
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

bool PdfSynthesis::isWriting()
{
    if (job_)
        desk_.showNotice(tr("A PDF is still being written."));
    return job_ != nullptr;
}

bool PdfSynthesis::drawImageToPDF(const QStringList& images)
{
    if (isWriting())
        return false;
    const QString path = chooseTarget();
    if (path.isEmpty())
        return false;
    const pictureSheets::Result result = write(path, images);
    if (result.end == pictureSheets::End::done)
        texts_.add(path, images, pdfFile::wishedForm(MIRVAK_PDF_LYING_A4));
    return tell(result, path, images);
}

/// What has text or is for archives is made by the camera library, everything else by the toolkit.
pictureSheets::Result
PdfSynthesis::writeSheets(const QString& path, const QStringList& images, Job& job) const
{
    const pdfFile::Form form = pdfFile::wishedForm(MIRVAK_PDF_LYING_A4);
    if (!form.isArchival && !settings::pdfText.read())
        return pictureSheets::write(path, images, job);
    return pictureSheets::writeWith(camera_, path, images, form, job);
}

/// Returns when the file is written or given up. Until then the window goes on, on whose clicks this stands.
pictureSheets::Result PdfSynthesis::write(const QString& path, const QStringList& images)
{
    job_ = std::make_shared<Job>();
    QEventLoop untilWritten;
    pictureSheets::Result result{pictureSheets::End::notWritten, 0};
    Workers writing;
    const bool isStarted = writing.start([&, job = job_.get()] {
        const auto end = qScopeGuard(
            [&] { QMetaObject::invokeMethod(&untilWritten, &QEventLoop::quit, Qt::QueuedConnection); });
        result = writeSheets(path, images, *job);
    });
    if (isStarted) {
        desk_.showJob(tr("The PDF is being written..."), job_);
        untilWritten.exec();
        job_->stop(); // when it is the program's end that ended the loop
        writing.finish();
    }
    job_.reset();
    return result;
}

bool PdfSynthesis::tell(const pictureSheets::Result& result, const QString& path, const QStringList& images)
{
    const QString unreadable = namedFiles(images.mid(result.pages, 1));
    switch (result.end) {
    case pictureSheets::End::done:
        lastPath_ = path;
        return true;
    case pictureSheets::End::unreadable:
        desk_.showNotice((result.pages == 0 ? tr("%1 could not be read. No PDF was made.")
                                            : tr("%1 could not be read. The PDF holds the pages before it."))
                             .arg(unreadable));
        return false;
    case pictureSheets::End::notWritten:
        desk_.showNotice(tr("The PDF could not be written."));
        return false;
    case pictureSheets::End::stopped:
        break;
    }
    desk_.showNotice(tr("Cancelled: no PDF was written."));
    return false;
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

#include "PdfFile.h"

#include "FileNaming.h"
#include "HiddenFile.h"
#include "Job.h"
#include "Settings.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <mutex>

namespace {

// What looking at the pictures takes of the whole, before the pages are written.
constexpr double looking = 0.3;

QStringList addPages(MirvakCamera& camera, const QStringList& pictures, const pdfFile::Texts& texts, Job& job)
{
    QStringList unreadable;
    for (int i = 0; i < pictures.size() && !job.isStopped(); ++i) {
        job.reach(looking * i / pictures.size());
        if (camera.MirvakPDF_AddPage(pictures[i].toUtf8().constData()) != MIRVAK_OK)
            unreadable << pictures[i];
        else if (size_t(i) < texts.size() && !texts[size_t(i)].empty())
            camera.MirvakPDF_SetWords(texts[size_t(i)]);
    }
    return unreadable;
}

int tellJob(int done, int count, void* context)
{
    auto* job = static_cast<Job*>(context);
    job->reach(done, count, looking);
    return job->isStopped() ? 1 : 0;
}

/// Without a file the library only forgets the pages.
int forgetPages(MirvakCamera& camera)
{
    return camera.MirvakPDF_Save(nullptr);
}

MirvakPdfOptions optionsOf(const pdfFile::Form& form, const QString& path)
{
    MirvakPdfOptions options;
    options.sheet = form.sheet;
    options.isArchival = form.isArchival;
    if (form.isArchival)
        options.title = QFileInfo(path).completeBaseName().toStdString();
    return options;
}

/// `named`: whose name is the title; empty for the file's own.
pdfFile::Result writeNew(MirvakCamera& camera,
                         const QStringList& pictures,
                         const QString& path,
                         Job* job,
                         const pdfFile::Form& form,
                         const pdfFile::Texts& texts,
                         const QString& named)
{
    Job unwatched;
    Job& told = job ? *job : unwatched;
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    pdfFile::Result result;
    result.path = path;
    result.code = FileNaming::saveNew(result.path, int(MIRVAK_EXISTS), [&](const QString& name) {
        result.unreadable = addPages(camera, pictures, texts, told);
        const MirvakPdfOptions options = optionsOf(form, named.isEmpty() ? name : named);
        const int code = result.unreadable.isEmpty() && !told.isStopped()
                             ? camera.MirvakPDF_SaveAs(name.toUtf8().constData(), options, tellJob, &told)
                             : forgetPages(camera);
        return code != MIRVAK_OK && told.isStopped() ? int(MIRVAK_STOPPED) : code;
    });
    return result;
}

/// 0, or one of MirvakResult.
int putInPlace(const QString& made, const QString& path, const std::function<bool()>& mayTake)
{
    const QByteArray from = QFile::encodeName(made);
    int code = mayTake && !mayTake() ? int(MIRVAK_EXISTS) : int(MIRVAK_OK);
    if (code == MIRVAK_OK && std::rename(from.constData(), QFile::encodeName(path).constData()) != 0) {
        std::fprintf(stderr, "PDF: %s: %s\n", qUtf8Printable(path), qUtf8Printable(qt_error_string(errno)));
        code = MIRVAK_IO_ERROR;
    }
    if (code != MIRVAK_OK)
        QFile::remove(made);
    return code;
}

} // namespace

pdfFile::Form pdfFile::wishedForm(MirvakPdfSheet sheet)
{
    return {settings::pdfArchive.read(), sheet};
}

pdfFile::Result pdfFile::write(
    MirvakCamera& camera, const QStringList& pictures, const QString& path, Job* job, const Form& form)
{
    return writeNew(camera, pictures, path, job, form, {}, {});
}

pdfFile::Result pdfFile::replace(MirvakCamera& camera,
                                 const QStringList& pictures,
                                 const QString& path,
                                 Job* job,
                                 const Form& form,
                                 const Texts& texts,
                                 const std::function<bool()>& mayTake)
{
    Result result = writeNew(camera, pictures, HiddenFile::nameBeside(path), job, form, texts, path);
    if (result.code == MIRVAK_OK)
        result.code = putInPlace(result.path, path, mayTake);
    result.path = path;
    return result;
}

QString pdfFile::pathIn(const QString& folder)
{
    return FileNaming::stampedPath(folder, QStringLiteral("pdf"));
}

QPixmap pdfFile::icon()
{
    return QPixmap(QStringLiteral(":/images/common/images/common/thumbnailPdf.png"));
}

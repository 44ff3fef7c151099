#include "PdfFile.h"

#include "FileNaming.h"
#include "Job.h"
#include "mirvakcamera.h"

#include <algorithm>
#include <mutex>

namespace {

// What looking at the pictures takes of the whole, before the pages are written.
constexpr double looking = 0.3;

QStringList addPages(MirvakCamera& camera, const QStringList& pictures, Job& job)
{
    QStringList unreadable;
    int seen = 0;
    std::copy_if(
        pictures.begin(), pictures.end(), std::back_inserter(unreadable), [&](const QString& picture) {
            job.reach(looking * seen++ / pictures.size());
            return !job.isStopped() && camera.MirvakPDF_AddPage(picture.toUtf8().constData()) != MIRVAK_OK;
        });
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

} // namespace

pdfFile::Result
pdfFile::write(MirvakCamera& camera, const QStringList& pictures, const QString& path, Job* job)
{
    Job unwatched;
    Job& told = job ? *job : unwatched;
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    Result result;
    result.path = path;
    result.code = FileNaming::saveNew(result.path, int(MIRVAK_EXISTS), [&](const QString& name) {
        result.unreadable = addPages(camera, pictures, told);
        const int code = result.unreadable.isEmpty() && !told.isStopped()
                             ? camera.MirvakPDF_SaveWatched(name.toUtf8().constData(), tellJob, &told)
                             : forgetPages(camera);
        return code != MIRVAK_OK && told.isStopped() ? int(MIRVAK_STOPPED) : code;
    });
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

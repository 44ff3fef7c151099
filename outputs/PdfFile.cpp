#include "PdfFile.h"

#include "FileNaming.h"
#include "mirvakcamera.h"

#include <algorithm>
#include <mutex>

namespace {

QStringList addPages(MirvakCamera& camera, const QStringList& pictures)
{
    QStringList unreadable;
    std::copy_if(
        pictures.begin(), pictures.end(), std::back_inserter(unreadable), [&](const QString& picture) {
            return camera.MirvakPDF_AddPage(picture.toUtf8().constData()) != MIRVAK_OK;
        });
    return unreadable;
}

} // namespace

pdfFile::Result pdfFile::write(MirvakCamera& camera, const QStringList& pictures, const QString& path)
{
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    Result result;
    result.path = path;
    result.code = FileNaming::saveNew(result.path, int(MIRVAK_EXISTS), [&](const QString& name) {
        result.unreadable = addPages(camera, pictures);
        const bool isComplete = result.unreadable.isEmpty();
        // Without a path the library only forgets the pages.
        return camera.MirvakPDF_Save(isComplete ? name.toUtf8().constData() : nullptr);
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

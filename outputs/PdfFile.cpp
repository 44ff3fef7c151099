#include "PdfFile.h"

#include "FileNaming.h"
#include "mirvakcamera.h"

#include <algorithm>
#include <mutex>

namespace {

int addPages(MirvakCamera& camera, const QStringList& pictures)
{
    return static_cast<int>(std::count_if(pictures.begin(), pictures.end(), [&](const QString& picture) {
        return camera.MirvakPDF_AddPage(picture.toUtf8().constData()) == MIRVAK_OK;
    }));
}

} // namespace

pdfFile::Result
pdfFile::write(MirvakCamera& camera, const QStringList& pictures, const QString& path, int minimumPages)
{
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    Result result{path};
    result.code = FileNaming::saveNew(result.path, int(MIRVAK_EXISTS), [&](const QString& name) {
        result.pages = addPages(camera, pictures);
        return result.pages >= minimumPages ? camera.MirvakPDF_Save(name.toUtf8().constData()) : 0;
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

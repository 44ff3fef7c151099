#include "PdfFile.h"

#include "FileNaming.h"
#include "mirvakcamera.h"

#include <mutex>

pdfFile::Result
pdfFile::write(MirvakCamera& camera, const QStringList& pictures, const QString& path, int minimumPages)
{
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    Result result;
    for (const QString& picture : pictures) {
        if (camera.MirvakPDF_AddPage(picture.toUtf8().constData()) == MIRVAK_OK)
            ++result.pages;
    }
    if (result.pages >= minimumPages)
        result.code = camera.MirvakPDF_Save(path.toUtf8().constData());
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

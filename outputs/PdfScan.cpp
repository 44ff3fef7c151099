#include "PdfScan.h"

#include "CaptureDesk.h"
#include "PdfFile.h"
#include "Settings.h"
#include "mirvakcamera.h"

namespace {

constexpr std::chrono::seconds frameTimeout(10);

} // namespace

QStringList PdfScan::capture()
{
    const FrameHandle frame = desk_.takeFrame(frameTimeout);
    if (!frame) {
        desk_.showNotice(tr("The camera delivers no picture."));
        return {};
    }
    QStringList pictures = desk_.savePages(frame.get(), settings::scanType.read());
    for (const QString& path : pictures)
        desk_.addThumbnail(path);
    return pictures;
}

void PdfScan::scan()
{
    if (!desk_.mayCapture())
        return;
    const QStringList pictures = capture();
    if (pictures.isEmpty())
        return;
    const QString folder = pictures.first().section(QLatin1Char('/'), 0, -2);
    const pdfFile::Result result = pdfFile::write(camera_, pictures, pdfFile::pathIn(folder));
    if (result.code == MIRVAK_OK)
        desk_.addDocument(result.path, pdfFile::icon());
    else
        desk_.showNotice(tr("The PDF could not be made. The picture itself is saved."));
}

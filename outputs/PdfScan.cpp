#include "PdfScan.h"

#include "CaptureDesk.h"
#include "PdfFile.h"
#include "Settings.h"
#include "mirvakcamera.h"

namespace {

constexpr std::chrono::seconds frameTimeout(10);

} // namespace

QString PdfScan::capture()
{
    const FrameHandle frame = desk_.takeFrame(frameTimeout);
    if (!frame) {
        desk_.showNotice(tr("The camera delivers no picture."));
        return {};
    }
    QString path = desk_.saveFrame(frame.get(), settings::scanType.read());
    desk_.addThumbnail(path);
    return path;
}

void PdfScan::scan()
{
    if (!desk_.mayCapture())
        return;
    const QString picture = capture();
    if (picture.isEmpty())
        return;
    const QString folder = picture.left(picture.lastIndexOf(QLatin1Char('/')));
    const pdfFile::Result result = pdfFile::write(camera_, {picture}, pdfFile::pathIn(folder));
    if (result.code == MIRVAK_OK)
        desk_.addDocument(result.path, pdfFile::icon());
    else
        desk_.showNotice(tr("The PDF could not be made. The picture itself is saved."));
}

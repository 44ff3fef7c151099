#include "PdfScan.h"

#include "CaptureDesk.h"
#include "PdfFile.h"
#include "PdfTexts.h"
#include "Settings.h"

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
    const pdfFile::Form form = pdfFile::wishedForm();
    const pdfFile::Result result = pdfFile::write(camera_, pictures, pdfFile::pathIn(folder), nullptr, form);
    if (result.code != MIRVAK_OK)
        return desk_.showNotice(tr("The PDF could not be made. The picture itself is saved."));
    desk_.addDocument(result.path, pdfFile::icon());
    texts_.add(result.path, pictures, form);
}

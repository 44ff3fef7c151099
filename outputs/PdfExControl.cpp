#include "PdfExControl.h"

#include "CaptureDesk.h"
#include "ComeForward.h"
#include "PdfEx.h"
#include "PdfTexts.h"
#include "Settings.h"

namespace {

constexpr std::chrono::seconds frameTimeout(10);

} // namespace

PdfExControl::PdfExControl(CaptureDesk& desk, PdfEx& dialog, PdfTexts& texts, QObject* parent)
    : QObject(parent), desk_(desk), dialog_(dialog)
{
    connect(&dialog, &PdfEx::pdfexscannered, this, &PdfExControl::scan);
    connect(&dialog, &PdfEx::setpdfquitsignal, this, [this] { desk_.enableTools(true); });
    connect(&dialog, &PdfEx::setpdfexthumbnail, this, [this](const QPixmap& icon, const QString& path) {
        desk_.addDocument(path, icon);
    });
    connect(&dialog, &PdfEx::pdfMade, &texts, &PdfTexts::add);
}

void PdfExControl::open(void* device, int width, int height, int rotation, int resolutionIndex)
{
    if (dialog_.isVisible())
        return comeForward(dialog_);
    if (!desk_.mayCapture())
        return;
    dialog_.ShowPdf(device, width, height, rotation, resolutionIndex);
    desk_.enableTools(false);
}

void PdfExControl::scan()
{
    const FrameHandle frame = desk_.takeFrame(frameTimeout);
    if (!frame)
        return dialog_.ShowNote(tr("The camera delivers no picture."));
    const QStringList pages = desk_.savePages(frame.get(), settings::scanType.read());
    if (pages.isEmpty())
        return dialog_.ShowNote(tr("The picture could not be saved."));
    for (const QString& path : pages)
        dialog_.SetScannerImage(path);
}

#include "ScanModes.h"

#include "CaptureDesk.h"
#include "Settings.h"

namespace {

constexpr std::chrono::seconds frameTimeout(8);
constexpr int documentColourMode = 5;

} // namespace

void ScanModes::scan()
{
    if (!desk_.mayCapture())
        return;
    const int colourMode = settings::scanType.read();
    if (composite_.isWanted())
        composite_.take(colourMode);
    else
        capture(colourMode);
}

void ScanModes::scanDocument()
{
    if (desk_.mayCapture())
        capture(documentColourMode);
}

void ScanModes::capture(int colourMode)
{
    const FrameHandle frame = desk_.takeFrame(frameTimeout);
    if (!frame) {
        desk_.showNotice(tr("The camera delivers no picture."));
        return;
    }
    for (const QString& path : desk_.savePages(frame.get(), colourMode))
        desk_.addThumbnail(path);
}

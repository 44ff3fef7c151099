#include "CompositeCapture.h"

#include "CaptureDesk.h"
#include "CaptureProcessor.h"
#include "Settings.h"
#include "mirvakcamera.h"

namespace {

constexpr std::chrono::seconds frameTimeout(2);
constexpr int margin = 50; // px
constexpr int insetShare = 3;

} // namespace

bool CompositeCapture::isWanted() const
{
    return settings::cameraSynthesis.read() && desk_.showsSecondCamera();
}

QPoint CompositeCapture::insetPosition(int corner, const QSize& main, const QSize& second)
{
    const bool isRight = corner == 2 || corner == 3;
    const bool isBottom = corner == 1 || corner == 3;
    return {isRight ? main.width() - second.width() / 2 - margin : margin,
            isBottom ? main.height() - second.height() / 2 - margin : margin};
}

void CompositeCapture::take(int colourMode)
{
    if (desk_.croppingMode() != cropping::none) {
        desk_.tell(tr("Tips"), tr("Please turn off deskew before using composite photo feature again"));
        return;
    }
    const FrameHandle main = desk_.takeFrame(frameTimeout);
    const FrameHandle second = main ? desk_.takeSecondFrame(frameTimeout) : ownImage(camera_, nullptr);
    const FrameHandle merged = main && second ? merge(main, second) : ownImage(camera_, nullptr);
    if (!merged) {
        desk_.showNotice(tr("One of the cameras delivers no picture."));
        return;
    }
    desk_.addThumbnail(desk_.saveFrame(merged.get(), colourMode));
}

FrameHandle CompositeCapture::merge(const FrameHandle& main, const FrameHandle& second) const
{
    const QSize inset = sizeOf(second);
    const QPoint place = insetPosition(settings::mergePos.read(), sizeOf(main), inset);
    return ownImage(camera_,
                    camera_.MirvakImage_Merge(main.get(),
                                              second.get(),
                                              place.x(),
                                              place.y(),
                                              inset.width() / insetShare,
                                              inset.height() / insetShare));
}

QSize CompositeCapture::sizeOf(const FrameHandle& frame) const
{
    return {camera_.MirvakImage_GetWidth(frame.get()), camera_.MirvakImage_GetHeight(frame.get())};
}

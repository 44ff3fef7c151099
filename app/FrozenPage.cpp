#include "FrozenPage.h"

#include "CaptureDesk.h"
#include "ImageChannel.h"
#include "Settings.h"
#include "SharedPicture.h"
#include "VideoView.h"
#include "mirvakcamera.h"

namespace {

constexpr std::chrono::milliseconds frameTimeout(300); // the view is already still: nobody sees the wait

} // namespace

FrozenPage::FrozenPage(VideoView& view, ImageChannel& channel, MirvakCamera& camera, CaptureDesk& desk)
    : view_(view), channel_(channel), camera_(camera), desk_(desk)
{
    connect(&view, &VideoView::frozenChanged, this, &FrozenPage::onFrozen);
    connect(&view, &VideoView::saveFrozenClicked, this, &FrozenPage::save);
}

/// The view's own picture may have the outline of the page drawn into it, and is not the camera's; so the
/// frame that follows is shown in its place.
void FrozenPage::onFrozen(bool frozen)
{
    page_.reset();
    if (!frozen)
        return;
    page_ = channel_.take(frameTimeout);
    if (!page_)
        return;
    const QImage still = sharedPicture(camera_, page_.get());
    if (!still.isNull())
        view_.ShowStill(still);
}

void FrozenPage::save()
{
    if (page_ && desk_.mayCapture())
        desk_.addThumbnail(desk_.saveFrame(page_.get(), settings::scanType.read()));
}

#include "FrozenPage.h"

#include "CaptureDesk.h"
#include "ImageChannel.h"
#include "PreviewBuffers.h"
#include "Settings.h"
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
    const int width = camera_.MirvakImage_GetWidth(page_.get());
    const int height = camera_.MirvakImage_GetHeight(page_.get());
    auto pixels = PreviewBuffers().take(static_cast<size_t>(width) * height * 3);
    if (camera_.MirvakImage_GetImageRGBData(page_.get(), pixels->pixels.data()) == MIRVAK_OK)
        view_.ShowStill(PreviewBuffers::wrap(std::move(pixels), width, height));
}

void FrozenPage::save()
{
    if (page_ && desk_.mayCapture())
        desk_.addThumbnail(desk_.saveFrame(page_.get(), settings::scanType.read()));
}

#include "FrameDelivery.h"

#include "CaptureProcessor.h"
#include "SharedPicture.h"

namespace {

constexpr int outlineWidth = 5;           // pixels of the frame
constexpr unsigned paperSizeInterval = 3; // frames; the check costs a page detection
constexpr unsigned pageInterval = 5;      // frames
constexpr unsigned pagesInterval = 4;     // frames; looking for several pages costs that of some for one

PageMark markOf(const MirvakVerdict& verdict)
{
    PageMark mark;
    mark.shot = verdict.shot;
    if (verdict.found) {
        for (const MirvakPointF& corner : verdict.page.corners)
            mark.corners << QPointF(corner.x, corner.y);
    }
    return mark;
}

} // namespace

void FrameDelivery::onFrame(void* image)
{
    if (!image)
        return;
    if (frameCount_ == 1 && secondFrame_)
        secondFrame_();
    rotate(image);
    if (pageCheck_ && frameCount_ % pageInterval == 0)
        pageCheck_(image);
    if (recorder_)
        recorder_(image);
    if (paperSizeCheck_ && frameCount_ % paperSizeInterval == 0)
        paperSizeCheck_(image);
    const PageMark mark = findPages(image);
    channel_.offer(image);
    // Whatever needs the camera's own picture has seen it: the view may have this one, with the outline in
    // it.
    drawPages(image);
    if (mark_)
        mark_(mark);
    show_(sharedPicture(camera_, image));
    ++frameCount_;
}

void FrameDelivery::rotate(void* image) const
{
    const int quarterTurns = rotation_;
    if (quarterTurns != 0)
        camera_.MirvakImage_Rotate(image, 90.0 * quarterTurns);
}

PageMark FrameDelivery::findPages(void* image)
{
    const int mode = croppingMode_;
    if (mode == cropping::second) {
        // What lies there seldom moves: the outlines of a search hold for the next frames too.
        if (pagesAge_++ % pagesInterval == 0)
            camera_.MirvakImage_FindPages(image, pages_);
        return {};
    }
    pages_.clear();
    pagesAge_ = 0;
    if (mode != cropping::deskew)
        return {};
    MirvakVerdict verdict{};
    camera_.MirvakImage_JudgePage(image, verdict);
    if (verdict.found)
        pages_.push_back(verdict.page);
    return markOf(verdict);
}

void FrameDelivery::drawPages(void* image) const
{
    if (pages_.empty())
        return;
    const int red = camera_.MirvakColor_SetRgbaToInt(255, 0, 0, 0);
    camera_.MirvakImage_DrawOutlines(image, pages_, red, outlineWidth);
}

#include "FrameDelivery.h"

#include "CaptureProcessor.h"

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

void FrameDelivery::onFrame(void* image, int width, int height)
{
    if (!image)
        return;
    if (frameCount_ == 1 && secondFrame_)
        secondFrame_();
    rotate(image, width, height);
    if (pageCheck_ && frameCount_ % pageInterval == 0)
        pageCheck_(image);
    if (recorder_)
        recorder_(image);
    PageMark mark;
    const QImage picture = toPicture(image, width, height, mark);
    channel_.offer(image);
    if (mark_)
        mark_(mark);
    show_(picture);
    if (paperSizeCheck_ && frameCount_ % paperSizeInterval == 0)
        paperSizeCheck_(image);
    ++frameCount_;
}

void FrameDelivery::rotate(void* image, int& width, int& height) const
{
    const int quarterTurns = rotation_;
    if (quarterTurns == 0 || camera_.MirvakImage_Rotate(image, 90.0 * quarterTurns) != MIRVAK_OK)
        return;
    if (quarterTurns % 2 == 1)
        std::swap(width, height);
}

QImage FrameDelivery::toPicture(void* image, int width, int height, PageMark& mark)
{
    std::unique_ptr<PreviewBuffers::Buffer> buffer = buffers_.take(static_cast<size_t>(width) * height * 3);
    findPages(image, mark);
    const int red = camera_.MirvakColor_SetRgbaToInt(255, 0, 0, 0);
    camera_.MirvakImage_GetOutlinedRGBData(image, buffer->pixels.data(), pages_, red, outlineWidth);
    return PreviewBuffers::wrap(std::move(buffer), width, height);
}

void FrameDelivery::findPages(void* image, PageMark& mark)
{
    const int mode = croppingMode_;
    if (mode == cropping::second) {
        // What lies there seldom moves: the outlines of a search hold for the next frames too.
        if (pagesAge_++ % pagesInterval == 0)
            camera_.MirvakImage_FindPages(image, pages_);
        return;
    }
    pages_.clear();
    pagesAge_ = 0;
    if (mode != cropping::deskew)
        return;
    MirvakVerdict verdict{};
    camera_.MirvakImage_JudgePage(image, verdict);
    mark = markOf(verdict);
    if (verdict.found)
        pages_.push_back(verdict.page);
}

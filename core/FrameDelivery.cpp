#include "FrameDelivery.h"

#include "CaptureProcessor.h"
#include "mirvakcamera.h"

namespace {

constexpr int outlineWidth = 5;           // pixels of the frame
constexpr unsigned paperSizeInterval = 3; // frames; the check costs a page detection
constexpr unsigned pageInterval = 5;      // frames

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
    const QImage picture = toPicture(image, width, height);
    channel_.offer(image);
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

QImage FrameDelivery::toPicture(void* image, int width, int height)
{
    std::unique_ptr<PreviewBuffers::Buffer> buffer = buffers_.take(static_cast<size_t>(width) * height * 3);
    FrameHandle outlined = ownImage(camera_, nullptr);
    if (croppingMode_ == cropping::deskew) {
        const int red = camera_.MirvakColor_SetRgbaToInt(255, 0, 0, 0);
        outlined = ownImage(camera_, camera_.MirvakImage_DrawLine(image, red, outlineWidth));
    }
    camera_.MirvakImage_GetImageRGBData(outlined ? outlined.get() : image, buffer->pixels.data());
    return PreviewBuffers::wrap(std::move(buffer), width, height);
}

#include "StillCapture.h"

#include "CameraSession.h"
#include "FrameDelivery.h"

StillCapture::StillCapture(const CameraSession& session,
                           FrameDelivery& delivery,
                           CaptureProcessor& processor,
                           Selection selection)
    : session_(session), delivery_(delivery), processor_(processor), selection_(std::move(selection))
{
}

bool StillCapture::isStreaming() const
{
    return session_.state() == CameraSession::Streaming;
}

FrameHandle StillCapture::take(std::chrono::milliseconds timeout)
{
    return delivery_.channel().take(timeout);
}

SavedPages StillCapture::savePages(void* image, int colourMode)
{
    return processor_.savePages(image, delivery_.croppingMode(), colourMode, selection_());
}

QString StillCapture::save(void* image, int cropMode, int colourMode)
{
    return processor_.imageSave(image, cropMode, colourMode, selection_());
}

#include "OpenCamera.h"

#include "PaperSize.h"

namespace mirvak {

OpenCamera::OpenCamera(std::unique_ptr<CameraDevice> device, ImagePool& pool)
    : device_(std::move(device)), modes_(device_->modes()), paperSize_(paperA3), focus_(*device_),
      pump_(*device_, pool)
{
}

OpenCamera::~OpenCamera()
{
    // The camera keeps its zoom when it is closed; who opens it next counts on the whole view.
    if (isZoomed_)
        device_->setZoom(1.0);
}

MirvakResult OpenCamera::start(int format, int index, int waiting, FramePump::Sink sink)
{
    const CameraMode* const mode = modes_.find(format, index);
    if (!mode || waiting < 1 || !sink)
        return MIRVAK_BAD_ARGUMENT;
    return pump_.start(*mode, waiting, [this, sink = std::move(sink)](Image* image) {
        if (image)
            focus_.look(*image);
        sink(image);
    });
}

MirvakResult OpenCamera::stop()
{
    const MirvakResult result = pump_.stop();
    if (result == MIRVAK_OK)
        focus_.abandon();
    return result;
}

MirvakResult OpenCamera::setControl(MirvakControl control, int value)
{
    if (control == MIRVAK_FOCUS || control == MIRVAK_FOCUS_AUTO)
        focus_.cancel();
    return device_->setControl(control, value);
}

MirvakResult OpenCamera::setPaperSize(int size)
{
    if (size != paperA3 && size != paperA4)
        return MIRVAK_BAD_ARGUMENT;
    const double share = size == paperA4 ? a4ShareOfA3 : 1.0;
    const bool isSet = device_->setZoom(1.0 / share);
    isZoomed_ = isSet && size == paperA4;
    pump_.setShare(isSet ? 1.0 : share);
    paperSize_ = size;
    return MIRVAK_OK;
}

} // namespace mirvak

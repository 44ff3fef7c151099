#include "OpenCamera.h"

#include "PaperSize.h"

namespace mirvak {

OpenCamera::OpenCamera(std::unique_ptr<CameraDevice> device, ImagePool& pool)
    : device_(std::move(device)), modes_(device_->modes()), paperSize_(paperA3), pump_(*device_, pool)
{
}

MirvakResult OpenCamera::start(int format, int index, int waiting, FramePump::Sink sink)
{
    const CameraMode* const mode = modes_.find(format, index);
    if (!mode || waiting < 1 || !sink)
        return MIRVAK_BAD_ARGUMENT;
    return pump_.start(*mode, waiting, std::move(sink));
}

MirvakResult OpenCamera::setPaperSize(int size)
{
    if (size != paperA3 && size != paperA4)
        return MIRVAK_BAD_ARGUMENT;
    const double share = size == paperA4 ? a4ShareOfA3 : 1.0;
    pump_.setShare(device_->setZoom(1.0 / share) ? 1.0 : share);
    paperSize_ = size;
    return MIRVAK_OK;
}

} // namespace mirvak

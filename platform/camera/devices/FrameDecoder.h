#pragma once

#include "CameraBackend.h"
#include "Image.h"
#include "JpegDecoder.h"

namespace mirvak {

/// Turns the raw frames of a camera into pictures: the per-frame work of a stream. Allocates nothing once the
/// first frame of a size has passed. One thread at a time.
class FrameDecoder
{
public:
    /// Decodes into `image`; memory of the right size is kept.
    /// @param share width and height of the centred part that is shown, scaled up to the frame's own size;
    ///              1.0 for the whole picture
    /// @return false when the frame is damaged: bytes missing, broken compression, or another size than
    ///         `frame` announces. The image is then undefined.
    bool decode(const RawFrame& frame, double share, Image& image);

    /// One compressed picture of any size into `image`.
    bool decodeJpeg(const uint8_t* data, size_t byteCount, Image& image);

private:
    bool decodeWhole(const RawFrame& frame, cv::Mat& rgb);
    bool decodePlanar(const RawFrame& frame, cv::Mat& rgb);

    JpegDecoder jpeg_;
    cv::Mat whole_;  // the uncropped picture
    cv::Mat planes_; // planes without the padding of their rows
};

} // namespace mirvak

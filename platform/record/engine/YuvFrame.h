#pragma once

#include "AvHandles.h"

#include <cstdint>
#include <vector>

namespace mirvak {

/// Pixels as the camera gives them: 24-bit RGB, rows from the top down without gaps.
struct VideoFormat
{
    int width = 0; ///< px
    int height = 0;
    int framesPerSecond = 0;

    size_t frameBytes() const { return size_t(width) * size_t(height) * 3; }
    /// Of the film: colours of 2 x 2 px blocks need even sides, an odd last column or row is left out.
    int filmWidth() const { return width & ~1; }
    int filmHeight() const { return height & ~1; }
};

/// The picture that goes to the encoder: 4:2:0 planes by ITU-R BT.709, limited range.
class YuvFrame
{
public:
    explicit YuvFrame(const VideoFormat& format);

    /// `rgb` holds the format's frameBytes(). @return 0 or FFmpeg's error
    int convert(const uint8_t* rgb);
    AVFrame& get() { return *frame_; }
    /// Tells the decoder what colours these are.
    static void describeColours(AVCodecContext& encoder);

private:
    void scale(const uint8_t* rgb, int firstRow, int rows);

    VideoFormat format_;
    AvFramePtr frame_;
    ScalerPtr scaler_;
    std::vector<uint8_t> lastRows_;
};

} // namespace mirvak

#pragma once

#include <opencv2/core.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace mirvak {

/// Decodes JPEG pictures to red, green, blue. Keeps its working memory from picture to picture. One thread at
/// a time.
class JpegDecoder
{
public:
    /// Throws std::bad_alloc when the codec gives no handle.
    JpegDecoder();

    /// Width and height from the header; nothing when it is no JPEG picture, or one in printing colours.
    std::optional<cv::Size> size(const uint8_t* data, size_t byteCount);

    /// Decodes into `rgb`, which keeps its memory when the size is the same. Accepts what cameras do: frames
    /// without Huffman tables (the standard ones hold then), without the end marker, with padding behind it.
    /// False when the data is damaged; `rgb` is then undefined.
    bool decode(const uint8_t* data, size_t byteCount, cv::Mat& rgb);

    /// The same at the smallest scale whose picture is still at least `atLeast` wide and high, for a caller
    /// that reduces it to that size anyway.
    bool decodeReduced(const uint8_t* data, size_t byteCount, cv::Size atLeast, cv::Mat& rgb);

private:
    struct Close
    {
        void operator()(void* handle) const;
    };
    void renew();
    bool decompress(const uint8_t* data, size_t byteCount, cv::Mat& rgb);

    std::unique_ptr<void, Close> handle_;
    std::vector<uint8_t> mended_; // a frame with the end marker that it lacked
};

} // namespace mirvak

#pragma once

#include "Symbology.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace mirvak::helper {

// What the camera library and its decoding helper say to each other over a socket of packets. The picture of
// a request lies in shared memory, 8-bit grey, rows without padding; the helper may only read it. Each
// request is answered by any number of readings and one packet that ends them.

constexpr int socketFd = 3;  ///< in the helper: where requests come from and answers go to
constexpr int pictureFd = 4; ///< in the helper: the shared memory
constexpr std::size_t textBytesAtMost = 16 * 1024; ///< the largest symbol holds 7089 digits

/// Which decoders look at the picture, in this order.
enum Decoders : std::uint32_t {
    bars = 1,     ///< one-dimensional codes and QR, several per picture
    matrices = 2, ///< all two-dimensional codes; some only near the middle, some only upright
    oneBar = 4,   ///< one one-dimensional code that fills the picture
    evenly =
        8, ///< no decoder: `matrices` takes one threshold for the whole picture, which noise disturbs less
};

struct Request
{
    std::int32_t width;  ///< pixels
    std::int32_t height; ///< pixels
    std::int32_t step;   ///< every step-th row and column is read by `bars`
    std::uint32_t decoders;
};

/// The head of a reading; its bytes follow in the same packet. With kind `end` nothing follows.
struct Reading
{
    enum Kind : std::uint8_t { end = 0, code = 1 };
    std::uint8_t kind;
    Symbology symbology;
    std::uint8_t isText;                ///< the bytes are UTF-8 by the code's own word
    std::uint8_t byZBar;                ///< which library read it
    std::int32_t agreeing;              ///< scan lines that read the same, for one-dimensional codes
    std::array<std::int32_t, 8> points; ///< x, y of four points around what was read, pixels of the picture
    std::uint32_t byteCount;
};

} // namespace mirvak::helper

#include "Descriptors.h"

#include <algorithm>

namespace lab {

namespace {

constexpr std::uint8_t classSpecific = 0x24;
constexpr int frameMjpeg = 7, frameUncompressed = 5;

void setLength16(Bytes& bytes, std::size_t at)
{
    bytes[at] = bytes.size() & 0xff;
    bytes[at + 1] = bytes.size() >> 8;
}

} // namespace

Bytes Descriptors::device() const
{
    Bytes bytes{18, 1, 0, 2, 0xEF, 2, 1, 64};
    append16(bytes, model_.vendor);
    append16(bytes, model_.product);
    append(bytes, {0, 1, 1, 2, 3, 1});
    return bytes;
}

Bytes Descriptors::string(int index) const
{
    if (index == 0)
        return {4, 3, 9, 4};
    const std::string& text = index == 1 ? std::string("Lab") : index == 2 ? model_.name : model_.serial;
    Bytes bytes{std::uint8_t(2 + 2 * text.size()), 3};
    for (const char letter : text)
        append16(bytes, std::uint8_t(letter));
    return bytes;
}

Bytes Descriptors::frames(int subtype) const
{
    constexpr std::uint32_t bitsLimit = 1'000'000'000;
    Bytes all;
    for (std::size_t i = 0; i < model_.sizes.size(); ++i) {
        const FrameSize& size = model_.sizes[i];
        const std::uint64_t bits = std::uint64_t(size.width) * size.height * 16;
        Bytes frame{0, classSpecific, std::uint8_t(subtype), std::uint8_t(i + 1), 0};
        append16(frame, size.width);
        append16(frame, size.height);
        append32(frame, std::min<std::uint64_t>(bits * 5, bitsLimit));
        append32(frame, std::min<std::uint64_t>(bits * 30, bitsLimit));
        append32(frame, size.byteLimit());
        append32(frame, frameIntervals[0]);
        frame.push_back(std::size(frameIntervals));
        for (const std::uint32_t interval : frameIntervals)
            append32(frame, interval);
        frame[0] = frame.size();
        append(all, frame);
    }
    return all;
}

Bytes Descriptors::videoControl() const
{
    Bytes bytes{13, classSpecific, 1, 0x00, 0x01, 0, 0};
    append32(bytes, 48'000'000);
    append(bytes, {1, 1});
    // Camera terminal: exposure mode, exposure time, focus, zoom, automatic focus.
    append(bytes, {18, classSpecific, 2, 1, 0x01, 0x02, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0x2a, 0x02, 0x02});
    append(bytes, {11, classSpecific, 5, 2, 1, 0, 0, 2, 0x5f, 0x17, 0}); // processing unit
    append(bytes, {9, classSpecific, 3, 3, 0x01, 0x01, 0, 2, 0});        // output terminal
    setLength16(bytes, 5);
    return bytes;
}

Bytes Descriptors::videoStreaming() const
{
    const std::uint8_t count = model_.sizes.size();
    const Bytes colours{6, classSpecific, 13, 1, 1, 4}; // sRGB primaries, BT.709 transfer, BT.601 matrix
    const Bytes yuy2{'Y', 'U', 'Y', '2', 0, 0, 0x10, 0, 0x80, 0, 0, 0xaa, 0, 0x38, 0x9b, 0x71};
    // Two formats, still pictures by hardware trigger, a general-purpose button.
    Bytes bytes{15, classSpecific, 1, 2, 0, 0, 0x81, 0, 3, 0, 0, 0, 1, 0, 0};
    append(bytes, {11, classSpecific, 6, 1, count, 1, 1, 0, 0, 0, 0});
    append(bytes, frames(frameMjpeg));
    append(bytes, colours);
    append(bytes, {27, classSpecific, 4, 2, count});
    append(bytes, yuy2);
    append(bytes, {16, 1, 0, 0, 0, 0});
    append(bytes, frames(frameUncompressed));
    append(bytes, colours);
    setLength16(bytes, 4);
    return bytes;
}

Bytes Descriptors::configuration() const
{
    Bytes bytes{9, 2, 0, 0, 2, 1, 0, 0x80, 250};
    append(bytes, {8, 11, 0, 2, 14, 3, 0, 2});   // interface association: video
    append(bytes, {9, 4, 0, 0, 1, 14, 1, 0, 2}); // video control
    append(bytes, videoControl());
    append(bytes, {7, 5, 0x82, 3, 16, 0, 8}); // interrupt endpoint 2 in
    append(bytes, {5, 0x25, 3, 16, 0});
    append(bytes, {9, 4, 1, 0, 1, 14, 2, 0, 0}); // video streaming
    append(bytes, videoStreaming());
    append(bytes, {7, 5, 0x81, 2, 0, 2, 0}); // bulk endpoint 1 in, 512 bytes a packet
    setLength16(bytes, 2);
    return bytes;
}

} // namespace lab

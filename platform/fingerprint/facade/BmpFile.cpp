#include "BmpFile.h"

#include "AtomicFile.h"
#include "FingerPixels.h"

#include <array>

namespace mirvak {

namespace {

constexpr int greys = 256;
constexpr int infoBytes = 40, headBytes = 14 + infoBytes + greys * 4;
constexpr int pixelBytes = fingerWidth * fingerHeight;
static_assert(fingerWidth % 4 == 0, "a row ends at a multiple of four bytes");

using Head = std::array<unsigned char, headBytes>;

void put(Head& head, size_t at, int value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        head[at + static_cast<size_t>(i)] = static_cast<unsigned char>(value >> (8 * i));
}

// The resolution stays 0, unknown: the picture was fitted.
Head makeHead()
{
    Head head{'B', 'M'};
    put(head, 2, headBytes + pixelBytes, 4);
    put(head, 10, headBytes, 4);
    put(head, 14, infoBytes, 4);
    put(head, 18, fingerWidth, 4);
    put(head, 22, fingerHeight, 4); // rows from the bottom up
    put(head, 26, 1, 2);            // planes
    put(head, 28, 8, 2);            // bits a pixel
    put(head, 34, pixelBytes, 4);
    put(head, 46, greys, 4);
    for (int grey = 0; grey < greys; ++grey)
        put(head, static_cast<size_t>(14 + infoBytes + grey * 4), grey * 0x010101, 4);
    return head;
}

} // namespace

bool writeFingerBmp(const unsigned char* pixels, const char* path)
{
    AtomicFile file(path, IfTaken::replace, Readers::owner);
    const Head head = makeHead();
    file.write(head.data(), head.size());
    for (int row = fingerHeight - 1; row >= 0; --row)
        file.write(pixels + static_cast<size_t>(row) * fingerWidth, fingerWidth);
    return file.commit() == AtomicFile::Commit::done;
}

} // namespace mirvak

#pragma once

#include "AtomicFile.h"
#include "Image.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mirvak {

using Bytes = std::vector<std::uint8_t>;

enum class WriteResult {
    ok,
    unknownFormat, ///< the extension is none of jpg, jpeg, png, bmp
    badPicture,    ///< empty, or larger than the format can hold
    nameTaken,     ///< a file of that name is never replaced
    ioError,       ///< the reason was printed
};

/// Reads a JPEG, PNG or BMP file, recognised by its first bytes. Colours become 8-bit RGB, transparent parts
/// lie on white, an Exif orientation is applied, the resolution is taken over (cameraDpi when the file has
/// none). @return nothing when the file cannot be read, is broken or cut short. Reentrant.
std::optional<Image> readImage(const std::string& path);
/// The same for a file in memory.
std::optional<Image> decodeImage(const Bytes& bytes);

/// Writes the picture in the format of the path's extension (any case); `quality` 1 to 100 holds for JPEG.
/// The file is a new one and appears only when it is complete and synced. Reentrant.
WriteResult
writeImage(const std::string& path, const Image& image, int quality, Readers readers = Readers::all);
/// The same with bytes that are coded already.
WriteResult writeBytes(const std::string& path, const Bytes& bytes, Readers readers = Readers::all);

/// The picture as the bytes of a file: JPEG, PNG or BMP as `extension` says (without dot, lower case).
/// Empty when the format cannot hold the picture or is not known.
Bytes encodeImage(const std::string& extension, const Image& image, int quality);

/// The bytes of a regular file; nothing when it cannot be read or is larger than any picture.
std::optional<Bytes> readFile(const std::string& path);
/// Of a file name: without the dot, lower case; empty without one.
std::string extensionOf(const std::string& path);

/// Whether a resolution read from a file can be meant: files without one often carry 0 or 1.
constexpr bool plausibleDpi(double dpi)
{
    return dpi >= 10 && dpi <= 10'000;
}

} // namespace mirvak

#include "Codec.h"

#include "AtomicFile.h"
#include "BmpCodec.h"
#include "JpegCodec.h"
#include "PngCodec.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

namespace mirvak {

namespace {

bool known(const std::string& extension)
{
    return extension == "jpg" || extension == "jpeg" || extension == "png" || extension == "bmp";
}

} // namespace

std::string extensionOf(const std::string& path)
{
    const size_t slash = path.find_last_of('/');
    const size_t dot = path.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
        return {};
    std::string extension = path.substr(dot + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) {
        return static_cast<char>(std::tolower(c));
    });
    return extension;
}

std::optional<Bytes> readFile(const std::string& path)
{
    std::error_code error;
    // A pipe or a device has no end; only regular files are pictures.
    if (!std::filesystem::is_regular_file(path, error))
        return std::nullopt;
    const auto size = std::filesystem::file_size(path, error);
    std::ifstream file(path, std::ios::binary);
    if (error || !file || size > 4ULL * maxPixels)
        return std::nullopt;
    Bytes bytes(size);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<size_t>(file.gcount()));
    return bytes;
}

std::optional<Image> decodeImage(const Bytes& bytes)
{
    if (looksLikeJpeg(bytes))
        return decodeJpeg(bytes);
    if (looksLikePng(bytes))
        return decodePng(bytes);
    if (looksLikeBmp(bytes))
        return decodeBmp(bytes);
    return std::nullopt;
}

std::optional<Image> readImage(const std::string& path)
{
    const std::optional<Bytes> bytes = readFile(path);
    return bytes ? decodeImage(*bytes) : std::nullopt;
}

Bytes encodeImage(const std::string& extension, const Image& image, int quality)
{
    if (image.pixels.empty())
        return {};
    if (extension == "jpg" || extension == "jpeg")
        return encodeJpeg(image, quality);
    if (extension == "png")
        return encodePng(image);
    if (extension == "bmp")
        return encodeBmp(image);
    return {};
}

WriteResult writeImage(const std::string& path, const Image& image, int quality, Readers readers)
{
    const std::string extension = extensionOf(path);
    if (!known(extension))
        return WriteResult::unknownFormat;
    return writeBytes(path, encodeImage(extension, image, quality), readers);
}

WriteResult writeBytes(const std::string& path, const Bytes& bytes, Readers readers)
{
    if (bytes.empty())
        return WriteResult::badPicture;
    AtomicFile file(path, IfTaken::refuse, readers);
    if (!file.write(bytes.data(), bytes.size()))
        return WriteResult::ioError;
    switch (file.commit()) {
    case AtomicFile::Commit::done:
        return WriteResult::ok;
    case AtomicFile::Commit::taken:
        return WriteResult::nameTaken;
    case AtomicFile::Commit::failed:
        break;
    }
    return WriteResult::ioError;
}

} // namespace mirvak

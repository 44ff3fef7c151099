#include "PictureFile.h"

#include "AtomicFile.h"
#include "JpegCodec.h"
#include "Rotate.h"

#include <filesystem>

namespace mirvak {

namespace {

constexpr int quality = 95; // as of captures

// Whoever could not read the picture before cannot read its next state either, at no moment.
WriteResult writeAsReadable(const std::string& from, const std::string& to, const Bytes& bytes)
{
    const WriteResult result = writeBytes(to, bytes, Readers::owner);
    std::error_code ignored; // a file system without rights has none to be kept
    using std::filesystem::perms;
    const perms rights = std::filesystem::status(from, ignored).permissions();
    if (result == WriteResult::ok && rights != perms::unknown)
        std::filesystem::permissions(
            to, rights & (perms::owner_all | perms::group_all | perms::others_all), ignored);
    return result;
}

} // namespace

WriteResult
writeChanged(const std::string& from, const std::string& to, const std::function<bool(Image&)>& change)
{
    std::optional<Image> image = readImage(from);
    if (!image || !change(*image))
        return WriteResult::badPicture;
    return writeAsReadable(from, to, encodeImage(extensionOf(from), *image, quality));
}

WriteResult writeTurned(const std::string& from, const std::string& to, int quarters)
{
    const std::string extension = extensionOf(from);
    if (extension == "jpg" || extension == "jpeg") {
        const std::optional<Bytes> bytes = readFile(from);
        const Bytes turned = bytes ? turnJpeg(*bytes, quarters) : Bytes();
        if (!turned.empty())
            return writeAsReadable(from, to, turned);
    }
    return writeChanged(from, to, [quarters](Image& image) {
        rotateQuarters(image, quarters);
        return true;
    });
}

} // namespace mirvak

#include "PictureFile.h"

#include "AtomicFile.h"
#include "JpegCodec.h"
#include "Rotate.h"

#include <filesystem>

namespace mirvak {

namespace {

constexpr int quality = 95; // as of captures

// What others could not read stays so.
Readers readersOf(const std::string& path)
{
    std::error_code error;
    using std::filesystem::perms;
    const perms rights = std::filesystem::status(path, error).permissions();
    return (rights & (perms::group_all | perms::others_all)) == perms::none ? Readers::owner : Readers::all;
}

} // namespace

WriteResult
writeChanged(const std::string& from, const std::string& to, const std::function<bool(Image&)>& change)
{
    std::optional<Image> image = readImage(from);
    if (!image || !change(*image))
        return WriteResult::badPicture;
    return writeBytes(to, encodeImage(extensionOf(from), *image, quality), readersOf(from));
}

WriteResult writeTurned(const std::string& from, const std::string& to, int quarters)
{
    const std::string extension = extensionOf(from);
    if (extension == "jpg" || extension == "jpeg") {
        const std::optional<Bytes> bytes = readFile(from);
        const Bytes turned = bytes ? turnJpeg(*bytes, quarters) : Bytes();
        if (!turned.empty())
            return writeBytes(to, turned, readersOf(from));
    }
    return writeChanged(from, to, [quarters](Image& image) {
        rotateQuarters(image, quarters);
        return true;
    });
}

} // namespace mirvak

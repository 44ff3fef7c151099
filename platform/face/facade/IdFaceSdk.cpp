#include "idfacesdk.h"

#include "Codec.h"
#include "Descriptor.h"
#include "FaceModule.h"
#include "LoadModule.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <new>

using face::Descriptor;
using face::PictureView;

namespace {

constexpr int bytesPerPixel = 3;
constexpr int bitsPerPixel24 = 24;
constexpr int livingScore = 50;

/// What the calls share.
struct Library
{
    std::mutex mutex;
    std::unique_ptr<face::FaceModule> module; ///< stays when it was once loaded
    bool isReady = false;
};

Library& library()
{
    static Library one;
    return one;
}

int failed(const char* call, IdFaceResult result, const char* why)
{
    std::fprintf(stderr, "%s: %s (%d)\n", call, why, result);
    return result;
}

// No exception leaves the library.
template <class Call> int guarded(const char* name, IdFaceResult whatElse, Call&& call) noexcept
{
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return failed(name, ID_FACE_NO_MEMORY, "out of memory");
    } catch (const std::exception& error) {
        return failed(name, whatElse, error.what());
    }
}

// The same for a call that needs the networks; they are its argument.
template <class Call> int withNetworks(const char* name, Call&& call) noexcept
{
    return guarded(name, ID_FACE_NO_MEMORY, [&] {
        const std::lock_guard lock(library().mutex);
        if (!library().isReady)
            return failed(name, ID_FACE_NOT_READY, "IdFaceSdkInit has not succeeded");
        return static_cast<int>(call(*library().module));
    });
}

std::unique_ptr<face::FaceModule> loadModule()
{
    const auto make = reinterpret_cast<face::MakeFaceModule>(
        mirvak::functionOfModule("face", face::faceModuleFile, face::makeFaceModuleName));
    return std::unique_ptr<face::FaceModule>(make ? make() : nullptr);
}

bool isPicture(const unsigned char* rgb, int width, int height)
{
    return rgb && width > 0 && height > 0 && std::int64_t{width} * height <= mirvak::maxPixels;
}

// Whether the record can be one that IdFaceSdkDetectFace filled: it comes back from outside.
bool holdsFace(const IdFaceInfo& face, int width, int height)
{
    const auto isNear = [](float value, int side) {
        return std::isfinite(value) && value > -2.0F * side && value < 3.0F * side;
    };
    bool isSound = face.pointCount == ID_FACE_POINTS;
    for (const auto& point : face.points)
        isSound = isSound && isNear(point[0], width) && isNear(point[1], height);
    return isSound;
}

int checkFace(const char* call, const PictureView& picture, const IdFaceInfo* face, const void* out)
{
    if (!isPicture(picture.rgb, picture.width, picture.height) || !face || !out)
        return failed(call, ID_FACE_BAD_ARGUMENT, "no picture, face or result");
    if (!holdsFace(*face, picture.width, picture.height))
        return failed(call, ID_FACE_NO_FACE, "no face of this picture");
    return ID_FACE_OK;
}

} // namespace

int IdFaceSdkInit(const char* libraryDirectory, const char* /*temporaryDirectory*/)
{
    constexpr const char* call = "IdFaceSdkInit";
    return guarded(call, ID_FACE_NO_WEIGHTS, [&] {
        const std::lock_guard lock(library().mutex);
        library().isReady = false;
        if (!libraryDirectory || !*libraryDirectory)
            return failed(call, ID_FACE_BAD_ARGUMENT, "no directory");
        if (!library().module)
            library().module = loadModule();
        if (!library().module)
            return failed(call, ID_FACE_NOT_READY, "the networks' libraries cannot be loaded");
        library().module->begin(std::string(libraryDirectory) + "/models/face");
        library().isReady = true;
        return static_cast<int>(ID_FACE_OK);
    });
}

int IdFaceSdkUninit(void)
{
    const std::lock_guard lock(library().mutex);
    library().isReady = false;
    return ID_FACE_OK;
}

int IdFaceSdkFeatureSize(void)
{
    return sizeof(Descriptor);
}

int IdFaceSdkDetectFace(const unsigned char* rgb, int width, int height, IdFaceInfo* face)
{
    constexpr const char* call = "IdFaceSdkDetectFace";
    return withNetworks(call, [&](face::FaceModule& module) {
        if (!isPicture(rgb, width, height) || !face)
            return failed(call, ID_FACE_BAD_ARGUMENT, "no picture or no record");
        return module.find({rgb, width, height}, *face);
    });
}

int IdFaceSdkFeatureGet(
    const unsigned char* rgb, int width, int height, const IdFaceInfo* face, unsigned char* feature)
{
    constexpr const char* call = "IdFaceSdkFeatureGet";
    return withNetworks(call, [&](face::FaceModule& module) {
        const PictureView picture{rgb, width, height};
        if (const int refusal = checkFace(call, picture, face, feature))
            return refusal;
        const Descriptor descriptor = module.describe(picture, *face);
        std::memcpy(feature, descriptor.data(), sizeof descriptor); // aligned or not
        return static_cast<int>(ID_FACE_OK);
    });
}

int IdFaceSdkFeatureCompare(const unsigned char* a, const unsigned char* b)
{
    if (!a || !b)
        return failed("IdFaceSdkFeatureCompare", ID_FACE_BAD_ARGUMENT, "no feature");
    Descriptor first, second;
    std::memcpy(first.data(), a, sizeof first);
    std::memcpy(second.data(), b, sizeof second);
    return face::scoreOf(first, second);
}

int IdFaceSdkGetLiveFaceStatus(void)
{
    const std::lock_guard lock(library().mutex);
    return library().isReady ? 1 : 0;
}

int IdFaceSdkLiveFaceDetect(int width,
                            int height,
                            const unsigned char* rgb,
                            const IdFaceInfo* face,
                            void* /*reserved1*/,
                            void* /*reserved2*/,
                            int* score)
{
    constexpr const char* call = "IdFaceSdkLiveFaceDetect";
    if (score)
        *score = 0;
    return withNetworks(call, [&](face::FaceModule& module) {
        const PictureView picture{rgb, width, height};
        if (const int refusal = checkFace(call, picture, face, score))
            return refusal;
        *score = module.liveness(picture, *face);
        return *score >= livingScore ? 1 : 0;
    });
}

int ReadImageFile(const char* path, unsigned char* rgb, int size, int* width, int* height, int bitsPerPixel)
{
    constexpr const char* call = "ReadImageFile";
    return guarded(call, ID_FACE_BAD_PICTURE, [&] {
        if (!path || !*path || !width || !height || bitsPerPixel != bitsPerPixel24)
            return failed(call, ID_FACE_BAD_ARGUMENT, "no path, no size or not 24 bits");
        const auto image = mirvak::readImage(path);
        if (!image)
            return failed(call, ID_FACE_BAD_PICTURE, path);
        const cv::Mat& pixels = image->pixels;
        *width = pixels.cols;
        *height = pixels.rows;
        if (!rgb && size == 0)
            return static_cast<int>(ID_FACE_OK);
        if (!rgb || size < 0 || static_cast<size_t>(size) / bytesPerPixel < pixels.total())
            return failed(call, ID_FACE_BAD_ARGUMENT, "the buffer is too small");
        std::memcpy(rgb, pixels.data, pixels.total() * bytesPerPixel);
        return static_cast<int>(ID_FACE_OK);
    });
}

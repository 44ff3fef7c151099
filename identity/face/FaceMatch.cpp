#include "FaceMatch.h"

#include "idfacesdk.h"

#include <cstdint>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

constexpr int bitsPerPixel = 24, bytesPerPixel = 3;
constexpr int notSupported = -1, notOneFace = -4;
constexpr std::int64_t pixelsAtMost = 200'000'000;

struct Picture
{
    int width = 0, height = 0;
    std::vector<unsigned char> rgb;
};

using Feature = std::vector<unsigned char>;

/// Which of the two readings failed, and what it said.
struct Unread
{
    int reading;
    int code;
};

std::optional<Unread> read(const QString& path, Picture& picture)
{
    const QByteArray name = path.toUtf8();
    const auto ask = [&](unsigned char* rgb, int size) {
        return ReadImageFile(name.constData(), rgb, size, &picture.width, &picture.height, bitsPerPixel);
    };
    if (const int code = ask(nullptr, 0))
        return Unread{1, code};
    const std::int64_t pixels = std::int64_t(picture.width) * picture.height;
    if (picture.width < 1 || picture.height < 1 || pixels > pixelsAtMost)
        return Unread{1, ID_FACE_BAD_PICTURE};
    picture.rgb.assign(static_cast<size_t>(pixels * bytesPerPixel), 0);
    if (const int code = ask(picture.rgb.data(), static_cast<int>(picture.rgb.size())))
        return Unread{2, code};
    return std::nullopt;
}

/// Nothing, or what the step that failed said; without a face how many there are, 0 or below.
std::optional<int> describe(const QString& path, Feature& feature)
{
    Picture picture;
    if (const auto unread = read(path, picture))
        return unread->code;
    IdFaceInfo face = {};
    const int faces = IdFaceSdkDetectFace(picture.rgb.data(), picture.width, picture.height, &face);
    if (faces < 1)
        return faces;
    const int code =
        IdFaceSdkFeatureGet(picture.rgb.data(), picture.width, picture.height, &face, feature.data());
    return code == 0 ? std::nullopt : std::optional(code);
}

/// A step that failed must not look like a match, whatever numbers a library uses.
int belowMatch(int code)
{
    return code < FaceMatch::samePerson ? code : -code;
}

} // namespace

int FaceMatch::matchingface(const QString& a, const QString& b)
{
    const int bytes = IdFaceSdkFeatureSize();
    if (bytes < 1)
        return ID_FACE_NOT_READY;
    Feature first(static_cast<size_t>(bytes)), second(first);
    if (const auto failure = describe(a, first))
        return belowMatch(*failure);
    if (const auto failure = describe(b, second))
        return belowMatch(*failure);
    return IdFaceSdkFeatureCompare(first.data(), second.data());
}

int FaceMatch::liveface(const QString& path)
{
    if (IdFaceSdkGetLiveFaceStatus() == 0) {
        std::puts("LiveFace not support!");
        return notSupported;
    }
    Picture picture;
    if (const auto unread = read(path, picture)) {
        std::printf("Read %d faile.\n", unread->reading);
        return unread->code < living ? unread->code : -unread->code;
    }
    IdFaceInfo face = {};
    if (IdFaceSdkDetectFace(picture.rgb.data(), picture.width, picture.height, &face) != 1) {
        std::puts("Detect face fail.");
        return notOneFace;
    }
    int score = 0;
    const int result = IdFaceSdkLiveFaceDetect(
        picture.width, picture.height, picture.rgb.data(), &face, nullptr, nullptr, &score);
    std::printf("IdFaceSdkFaceLive return %d. (score=%d)\n", result, score);
    return result == 1 ? surelyLiving : score;
}

// The next state of a picture's file.
#include "Deskew.h"
#include "Outline.h"
#include "PictureFile.h"
#include "imageCalls.h"

#include <algorithm>

using mirvak::Image;
using mirvak::WriteResult;

namespace {

bool isPath(const char* path)
{
    return path && *path;
}

int resultOf(WriteResult written)
{
    switch (written) {
    case WriteResult::ok:
        return MIRVAK_OK;
    case WriteResult::ioError:
        return MIRVAK_IO_ERROR;
    case WriteResult::nameTaken:
        return MIRVAK_EXISTS;
    case WriteResult::unknownFormat:
    case WriteResult::badPicture:
        break;
    }
    return MIRVAK_BAD_ARGUMENT;
}

bool isMeant(const MirvakPointF& part)
{
    return part.x >= -1 && part.x <= 2 && part.y >= -1 && part.y <= 2; // and so a number
}

// Pixel centres lie at whole numbers, a picture's edges half a pixel outside.
cv::Point2d inPixels(const MirvakPointF& part, const cv::Size& size)
{
    return {double(part.x) * size.width - 0.5, double(part.y) * size.height - 0.5};
}

MirvakPointF inParts(const cv::Point2d& pixels, const cv::Size& size)
{
    return {static_cast<float>((pixels.x + 0.5) / size.width),
            static_cast<float>((pixels.y + 0.5) / size.height)};
}

} // namespace

int MirvakCamera::MirvakPicture_Turn(const char* from, const char* to, int quarters)
{
    return mirvak::guarded("MirvakPicture_Turn", [&] {
        return isPath(from) && isPath(to) ? resultOf(mirvak::writeTurned(from, to, quarters))
                                          : MIRVAK_BAD_ARGUMENT;
    });
}

int MirvakCamera::MirvakPicture_Straighten(const char* from, const char* to, int margin)
{
    return mirvak::guarded("MirvakPicture_Straighten", [&] {
        if (!isPath(from) || !isPath(to) || margin < 0)
            return int(MIRVAK_BAD_ARGUMENT);
        bool isStraight = false;
        const WriteResult written = mirvak::writeChanged(from, to, [&](Image& image) {
            isStraight = mirvak::deskew(image, margin) == mirvak::Deskewed::nothing;
            return !isStraight;
        });
        return isStraight ? int(MIRVAK_NOT_FOUND) : resultOf(written);
    });
}

int MirvakCamera::MirvakPicture_Cut(const char* from, const char* to, const MirvakPointF (&corners)[4])
{
    return mirvak::guarded("MirvakPicture_Cut", [&] {
        if (!isPath(from) || !isPath(to) || !std::all_of(std::begin(corners), std::end(corners), isMeant))
            return int(MIRVAK_BAD_ARGUMENT);
        return resultOf(mirvak::writeChanged(from, to, [&](Image& image) {
            std::array<cv::Point2d, 4> shape;
            std::transform(std::begin(corners),
                           std::end(corners),
                           shape.begin(),
                           [&](const MirvakPointF& corner) { return inPixels(corner, image.pixels.size()); });
            return mirvak::cutOut(image, shape);
        }));
    });
}

int MirvakCamera::MirvakPicture_FindPage(const char* from, MirvakPointF (&corners)[4])
{
    return mirvak::guarded("MirvakPicture_FindPage", [&] {
        const std::optional<Image> image = isPath(from) ? mirvak::readImage(from) : std::nullopt;
        if (!image)
            return MIRVAK_BAD_ARGUMENT;
        const std::optional<mirvak::Outline> page = mirvak::findOutline(image->pixels);
        if (!page)
            return MIRVAK_NOT_FOUND;
        const mirvak::Outline exact = mirvak::refineOutline(image->pixels, *page);
        std::transform(exact.corners.begin(),
                       exact.corners.end(),
                       std::begin(corners),
                       [&](const cv::Point2d& corner) { return inParts(corner, image->pixels.size()); });
        return MIRVAK_OK;
    });
}

#include "Rivals.h"

#include <leptonica/allheaders.h>
#include <opencv2/imgproc.hpp>

#include <array>
#include <memory>

namespace {

struct DestroyPix
{
    void operator()(Pix* pix) const { pixDestroy(&pix); }
};
using PixPtr = std::unique_ptr<Pix, DestroyPix>;
struct DestroyDewarpa
{
    void operator()(L_Dewarpa* all) const { dewarpaDestroy(&all); }
};

PixPtr toPix(const cv::Mat& rgb)
{
    PixPtr pix(pixCreate(rgb.cols, rgb.rows, 32));
    for (int y = 0; y < rgb.rows; ++y) {
        l_uint32* line = pixGetData(pix.get()) + ptrdiff_t(y) * pixGetWpl(pix.get());
        for (int x = 0; x < rgb.cols; ++x) {
            const cv::Vec3b& p = rgb.at<cv::Vec3b>(y, x);
            composeRGBPixel(p[0], p[1], p[2], line + x);
        }
    }
    return pix;
}

cv::Mat toMat(Pix* pix)
{
    cv::Mat rgb(pixGetHeight(pix), pixGetWidth(pix), CV_8UC3);
    for (int y = 0; y < rgb.rows; ++y) {
        const l_uint32* line = pixGetData(pix) + ptrdiff_t(y) * pixGetWpl(pix);
        for (int x = 0; x < rgb.cols; ++x) {
            int r = 0, g = 0, b = 0;
            extractRGBValues(line[x], &r, &g, &b);
            rgb.at<cv::Vec3b>(y, x) = cv::Vec3b(uchar(r), uchar(g), uchar(b));
        }
    }
    return rgb;
}

/// From the photograph to the upright page.
cv::Matx33d toCrop(const deskpictures::Spread& spread, bool isRight)
{
    const cv::Size2d mm = spread.pageMm;
    const std::array<cv::Point2d, 4> places = {
        {{0, 0}, {mm.width, 0}, {mm.width, mm.height}, {0, mm.height}}};
    std::array<cv::Point2f, 4> seen, wanted;
    for (size_t i = 0; i < places.size(); ++i) {
        seen[i] = spread.toPhoto(isRight, places[i]);
        wanted[i] = places[i] * spread.view->pxPerMm();
    }
    return cv::getPerspectiveTransform(seen.data(), wanted.data());
}

} // namespace

cv::Mat rivals::cropped(const deskpictures::Spread& spread, bool isRight)
{
    const double pxPerMm = spread.view->pxPerMm();
    cv::Mat page;
    cv::warpPerspective(spread.photo,
                        page,
                        toCrop(spread, isRight),
                        {int(spread.pageMm.width * pxPerMm), int(spread.pageMm.height * pxPerMm)},
                        cv::INTER_CUBIC,
                        cv::BORDER_REPLICATE);
    return page;
}

cv::Point2d rivals::placeInCrop(const deskpictures::Spread& spread, bool isRight, cv::Point2d pointMm)
{
    const cv::Point2d seen = spread.toPhoto(isRight, pointMm);
    const cv::Vec3d place = toCrop(spread, isRight) * cv::Vec3d(seen.x, seen.y, 1);
    return cv::Point2d(place[0], place[1]) / (place[2] * spread.pageMm.width * spread.view->pxPerMm());
}

cv::Mat rivals::dewarped(const cv::Mat& crop)
{
    setMsgSeverity(L_SEVERITY_NONE); // it speaks of every page
    const PixPtr page = toPix(crop);
    const PixPtr even(pixBackgroundNormSimple(page.get(), nullptr, nullptr));
    if (!even)
        return crop;
    const PixPtr grey(pixConvertRGBToGray(even.get(), 0.5F, 0.3F, 0.2F));
    const PixPtr black(pixThresholdToBinary(grey.get(), 130));
    const std::unique_ptr<L_Dewarpa, DestroyDewarpa> all(dewarpaCreate(1, 30, 1, 10, 50));
    L_Dewarp* dewarp = dewarpCreate(black.get(), 0);
    if (!dewarp || dewarpaInsertDewarp(all.get(), dewarp) != 0 || dewarpBuildPageModel(dewarp, nullptr) != 0)
        return crop;
    Pix* result = nullptr;
    if (dewarpaApplyDisparity(all.get(), 0, page.get(), 255, 0, 0, &result, nullptr) != 0 || !result)
        return crop;
    return toMat(PixPtr(result).get());
}

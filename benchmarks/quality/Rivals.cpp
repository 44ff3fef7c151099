#include "Rivals.h"

#include "Commands.h"

#include <leptonica/allheaders.h>
#include <opencv2/imgproc.hpp>

#include <memory>
#include <vector>

namespace {

struct DestroyPix
{
    void operator()(Pix* pix) const { pixDestroy(&pix); }
};
using PixPtr = std::unique_ptr<Pix, DestroyPix>;

cv::Mat greyOf(const cv::Mat& rgb)
{
    cv::Mat grey;
    cv::cvtColor(rgb, grey, cv::COLOR_RGB2GRAY);
    return grey;
}

PixPtr toPix(const cv::Mat& picture)
{
    PixPtr pix(pixCreate(picture.cols, picture.rows, picture.channels() == 3 ? 32 : 8));
    for (int y = 0; y < picture.rows; ++y) {
        l_uint32* line = pixGetData(pix.get()) + ptrdiff_t(y) * pixGetWpl(pix.get());
        const uchar* p = picture.ptr(y);
        for (int x = 0; x < picture.cols; ++x) {
            if (picture.channels() == 3)
                composeRGBPixel(p[3 * x], p[3 * x + 1], p[3 * x + 2], line + x);
            else
                SET_DATA_BYTE(line, x, p[x]);
        }
    }
    return pix;
}

cv::Mat toMat(Pix* pix)
{
    const PixPtr whole(pixGetDepth(pix) == 32 ? pixClone(pix) : pixConvertTo8(pix, 0));
    const bool isColour = pixGetDepth(whole.get()) == 32;
    cv::Mat picture(pixGetHeight(pix), pixGetWidth(pix), isColour ? CV_8UC3 : CV_8UC1);
    for (int y = 0; y < picture.rows; ++y) {
        const l_uint32* line = pixGetData(whole.get()) + ptrdiff_t(y) * pixGetWpl(whole.get());
        uchar* p = picture.ptr(y);
        for (int x = 0; x < picture.cols; ++x) {
            int r = 0, g = 0, b = 0;
            if (isColour) {
                extractRGBValues(line[x], &r, &g, &b);
                p[3 * x] = uchar(r), p[3 * x + 1] = uchar(g), p[3 * x + 2] = uchar(b);
            } else {
                p[x] = uchar(GET_DATA_BYTE(line, x));
            }
        }
    }
    return picture;
}

} // namespace

cv::Mat rivals::otsu(const cv::Mat& rgb)
{
    cv::Mat result;
    cv::threshold(greyOf(rgb), result, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    return result;
}

cv::Mat rivals::adaptive(const cv::Mat& rgb)
{
    cv::Mat result;
    cv::adaptiveThreshold(greyOf(rgb), result, 255, cv::ADAPTIVE_THRESH_MEAN_C, cv::THRESH_BINARY, 51, 15);
    return result;
}

cv::Mat rivals::sauvola(const cv::Mat& rgb)
{
    const PixPtr grey = toPix(greyOf(rgb));
    Pix* black = nullptr;
    pixSauvolaBinarizeTiled(grey.get(), 25, 0.35F, 4, 4, nullptr, &black);
    return toMat(PixPtr(black).get());
}

cv::Mat rivals::normalisedOtsu(const cv::Mat& rgb)
{
    const PixPtr even(pixBackgroundNormSimple(toPix(greyOf(rgb)).get(), nullptr, nullptr));
    Pix* black = nullptr;
    pixOtsuAdaptiveThreshold(even.get(), 2000, 2000, 0, 0, 0.1F, nullptr, &black);
    return toMat(PixPtr(black).get());
}

cv::Mat rivals::normalised(const cv::Mat& rgb)
{
    return toMat(PixPtr(pixBackgroundNormSimple(toPix(rgb).get(), nullptr, nullptr)).get());
}

cv::Mat rivals::division(const cv::Mat& rgb)
{
    std::vector<cv::Mat> channels;
    cv::split(rgb, channels);
    for (cv::Mat& channel : channels) {
        cv::Mat paper;
        cv::morphologyEx(
            channel, paper, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_RECT, {41, 41}));
        cv::GaussianBlur(paper, paper, {}, 20);
        cv::divide(channel, paper, channel, 255);
    }
    cv::Mat result;
    cv::merge(channels, result);
    return result;
}

cv::Mat rivals::greyWorld(const cv::Mat& rgb)
{
    const cv::Scalar mean = cv::mean(rgb);
    const double all = (mean[0] + mean[1] + mean[2]) / 3;
    cv::Mat result;
    cv::multiply(rgb, cv::Scalar(all / mean[0], all / mean[1], all / mean[2]), result);
    double most = 0;
    cv::minMaxLoc(result.reshape(1), nullptr, &most);
    return result * (255 / most);
}

cv::Mat rivals::imageMagickLat(const cv::Mat& rgb)
{
    return commands::run("convert %in -colorspace Gray -negate -lat 25x25+10% -negate -depth 8 pgm:%out",
                         rgb);
}

cv::Mat rivals::imageMagickDeskew(const cv::Mat& rgb)
{
    return commands::run("convert %in -background white -deskew 40% +repage -depth 8 ppm:%out", rgb);
}

namespace {

const std::string inPlace = "--no-deskew --no-border-scan --no-border-align --no-mask-scan";

} // namespace

cv::Mat rivals::unpaperBlack(const cv::Mat& rgb)
{
    return commands::run("unpaper --overwrite " + inPlace + " -t pbm %in %out", rgb);
}

cv::Mat rivals::unpaperColour(const cv::Mat& rgb)
{
    return commands::run("unpaper --overwrite " + inPlace + " -t ppm %in %out", rgb);
}

cv::Mat rivals::unpaperDeskew(const cv::Mat& rgb)
{
    return commands::run("unpaper --overwrite --no-border-align --no-mask-center -t ppm %in %out", rgb);
}

cv::Mat rivals::leptonicaDeskew(const cv::Mat& rgb)
{
    return toMat(PixPtr(pixDeskew(toPix(rgb).get(), 0)).get());
}

Operation installed(const char* program, const Operation& operation)
{
    return commands::isThere(program) ? operation : Operation();
}

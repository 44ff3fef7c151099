#pragma once

#include <opencv2/core.hpp>

#include <functional>

using Operation = std::function<cv::Mat(const cv::Mat&)>;

/// Nothing where the program is missing.
Operation installed(const char* program, const Operation& operation);

/// What people use instead. RGB in, RGB or CV_8U out.
namespace rivals {

cv::Mat otsu(const cv::Mat& rgb);           ///< OpenCV
cv::Mat adaptive(const cv::Mat& rgb);       ///< OpenCV, mean of the surroundings
cv::Mat sauvola(const cv::Mat& rgb);        ///< Leptonica, in tiles
cv::Mat normalisedOtsu(const cv::Mat& rgb); ///< Leptonica: even background, then Otsu
cv::Mat normalised(const cv::Mat& rgb);     ///< Leptonica: even background, in colour
cv::Mat division(const cv::Mat& rgb);       ///< each channel divided by its closed, softened self
cv::Mat greyWorld(const cv::Mat& rgb);      ///< channels to one mean, then stretched

// By their commands; empty when one is not installed or fails.
cv::Mat imageMagickLat(const cv::Mat& rgb);    ///< ImageMagick, local adaptive threshold
cv::Mat imageMagickDeskew(const cv::Mat& rgb); ///< the whole picture is turned
cv::Mat unpaperBlack(const cv::Mat& rgb);      ///< unpaper, black and white, the page stays where it is
cv::Mat unpaperColour(const cv::Mat& rgb);     ///< the same in colour
cv::Mat unpaperDeskew(const cv::Mat& rgb);
cv::Mat leptonicaDeskew(const cv::Mat& rgb);

} // namespace rivals

#pragma once

#include <opencv2/core.hpp>

#include <string>
#include <vector>

/// The picture of one code with its quiet zone, black on white, CV_8UC1. `zintSymbology` is one of zint.h's
/// BARCODE_ numbers; `modulePx` the side of a square or the width of the thinnest bar in pixels; `inputMode`
/// is 1 for UTF-8, 0 for bytes that are taken as they are. Fails the program when the text does not fit the
/// symbology.
cv::Mat drawCode(int zintSymbology, const std::string& text, int modulePx, int inputMode = 1);

/// A page on which codes are laid.
class CodePage
{
public:
    CodePage(int width, int height, int grey = 255);

    struct Place
    {
        cv::Point2d centre;     ///< pixels
        double degrees = 0;     ///< clockwise
        double modulePx = 3;    ///< pixels of the page
        double perspective = 0; ///< how much shorter the far side is, as a share
        bool inverted = false;  ///< light on dark ground
    };
    /// Lays the code there; its corners with the quiet zone.
    std::vector<cv::Point2f> add(int zintSymbology, const std::string& text, const Place& place);
    void blur(double sigmaPx);
    void addNoise(double sigma, unsigned seed);
    /// Paper and ink as grey values.
    void setTones(int ink, int paper);

    const cv::Mat& grey() const { return grey_; }
    cv::Mat rgb() const; ///< CV_8UC3

private:
    cv::Mat grey_;
};

#pragma once

#include "books/Spread.h"

#include <functional>
#include <optional>

/// What is wrong with a picture of a page, next to the page itself.
struct PageScore
{
    double bend = 0; ///< of the text lines: mean distance from straight, thousandths of the page's width
    double arch = 0; ///< median of the largest distance of each text line from straight, in heights of type
    double tilt = 0; ///< mean angle of the text lines to the picture's edge, degrees
    double ssim = 0; ///< of the print, when moved, scaled and sheared as fits best
    double farthest = 0; ///< largest distance (nine of ten places: like print elsewhere misleads some) from
                         ///< that fit, thousandths of the page's width
    std::optional<double> fingers; ///< share of the paper that was covered and does not look like the page
    int lines = 0;                 ///< that were measured
};

/// Nothing when the page is not to be found in the picture. @param picture  RGB, of this page alone
std::optional<PageScore>
measure(const deskpictures::SpreadPage& page, cv::Size2d pageMm, const cv::Mat& picture);

/// The same bend, arch and tilt of a picture whose geometry is known: where it has a point of the page (mm),
/// as parts of its width.
PageScore linesOf(const deskpictures::SpreadPage& page,
                  cv::Size2d pageMm,
                  const std::function<cv::Point2d(cv::Point2d)>& place);

/// The flat page, RGB.
cv::Mat trueFlat(const deskpictures::SpreadPage& page);

/// Share of wrong characters when the picture, cleaned and brought to 300 dots per inch, is read by the plain
/// `tesseract` command. Nothing for a page that is not to be read.
std::optional<double>
wrongCharacters(const deskpictures::BookPage& page, cv::Size2d pageMm, const cv::Mat& picture);

// Bent paper made with known truth: sheets under a camera that looks straight down.
#pragma once

#include "MadePages.h"

#include <opencv2/core.hpp>

#include <functional>
#include <vector>

namespace made {

inline constexpr int pageWidth = 620, pageHeight = 860; // pixels of a flat page
const cv::Size bookFrame(1600, 1180);
inline constexpr int rules = 5; // red ones across and along a page, at even distances

/// Where rule k lies on a page of that length.
int ruleAt(int k, int length);
/// With red rules for the test; the algorithm looks at letters alone.
cv::Mat ruled(cv::Mat page);
cv::Mat ruledText(unsigned seed);

/// A sheet that rises and falls from its inner end outwards.
struct BentSheet
{
    cv::Mat picture;
    std::function<double(double)> height; ///< over the desk, by the distance from the inner end; pixels
    bool goesRight = true;
    double from = 0; ///< of the inner end, from the frame's middle, pixels
};

/// As a camera 2000 above the desk sees them; `shade` is the light that gets lost at an inner end.
cv::Mat photograph(const std::vector<BentSheet>& sheets,
                   double shade,
                   double degrees = 0,
                   cv::Point2d aside = {},
                   Desk ground = Desk::dark);
/// Both pages of an open book, darker towards the gutter.
cv::Mat spread(const cv::Mat& left,
               const cv::Mat& right,
               double bulge,
               double degrees = 0,
               cv::Point2d aside = {},
               Desk ground = Desk::dark);

/// Places of the red rules that cross one row (or column) of a picture.
std::vector<double> crossings(const cv::Mat& rgb, int at, bool alongRow);

struct Shape
{
    double bend = 0;   ///< pixels: greatest deviation of a rule across the page from straight and level
    double uneven = 0; ///< difference of the distances of rules along the page that one in twenty exceeds,
                       ///< share of their mean
    int looks = 0;
};
Shape shapeOf(const cv::Mat& page);

} // namespace made

// Pictures of pages made with known truth: what lies on the paper, where its corners are, how the light
// falls.
#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace made {

using Corners = std::array<cv::Point2d, 4>; // clockwise from the top left, pixel centres at whole numbers

/// Sheets, RGB. Sizes in pixels.
cv::Mat textPage(cv::Size size, int lineHeight, unsigned seed = 1);
cv::Mat blankPage(cv::Size size);
cv::Mat tablePage(cv::Size size);
cv::Mat cardPage(cv::Size size);
/// Ring, star and bar of a stamp of that colour, `diameter` pixels, multiplied onto the sheet as ink is.
void stamp(cv::Mat& sheet, cv::Point centre, int diameter, cv::Scalar colour);

/// Grounds, RGB.
enum class Desk { light, dark, wood, checked, noisy, coloured };
cv::Mat desk(cv::Size size, Desk kind, unsigned seed = 1);

struct Light
{
    double darkest = 1;       ///< factor in the darkest corner; 1 is even light
    double shadow = 1;        ///< factor inside a soft-edged shadow across part of the picture; 1 is none
    double noise = 2;         ///< standard deviation, levels
    double dropShadow = 0.75; ///< factor beside the page's lower right edges; 1 is none
};

/// Lays the sheet with its corners on the given points of the ground.
void lay(cv::Mat& ground, const cv::Mat& sheet, const Corners& corners, double dropShadow = 1);
/// Light, shadow and noise over the whole picture.
void shine(cv::Mat& picture, const Light& light, unsigned seed = 1);

/// Corners of a w x h rectangle turned clockwise by `degrees` about `centre` and tilted away from the camera:
/// its far side is smaller by the share `tilt`.
Corners placed(cv::Point2d centre, cv::Size2d size, double degrees, double tilt = 0);

/// Corners of a sheet of width x height (any unit) as a pinhole camera sees it: turned clockwise in its own
/// plane, then tipped back and sideways (degrees). `focal` in pixels, `across` the width in pixels that it
/// would have untilted; the optical axis goes through the frame's middle and the sheet's.
Corners photographed(cv::Size frame, cv::Size2d sheet, double focal, double across, cv::Vec3d turnBackSide);

/// Greatest distance between corners of the same index.
double farthest(const Corners& a, const Corners& b);

/// A finger of the hand that holds a page down. Round, so that its middle is lighter than its rim.
void finger(cv::Mat& rgb, const cv::Point& tip, const cv::Point& hand);

} // namespace made

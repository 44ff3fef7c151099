#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

// The arithmetic of EdgeField, many pixels at once. Any thread.

/// The gradient at each pixel by Sobel's operator, of the plane that changes most: eight to a level of a
/// step. `planes`: three CV_8UC1 of one size. `x`, `y`, `magnitude` (|x| + |y|): CV_16SC1 of that size; 0 in
/// the outermost pixels, which have no neighbours, and everywhere in a strip too narrow for a page. `work`:
/// what the next call can use again.
void findGradients(const std::array<cv::Mat, 3>& planes,
                   std::vector<short>& work,
                   cv::Mat& x,
                   cv::Mat& y,
                   cv::Mat& magnitude);

constexpr size_t directionsAtOnce = 4;
/// Angles of that many gradients over half a turn, as in EdgePoint::direction. The polynomial is the odd one
/// of seventh degree that is nearest to the arc tangent from 0 to 1: good to a hundredth of a degree.
void findDirections(const short* dx, const short* dy, std::array<int, directionsAtOnce>& directions);

} // namespace mirvak

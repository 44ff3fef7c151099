#pragma once

#include "Chance.h"

namespace sheetmap {

/// One sheet as it lies before the camera, 8-bit RGB with how much of each pixel it covers (CV_8UC4).
struct PaperSheet
{
    cv::Mat image;
    double roundness = 0; ///< of the corners, share of the shorter side
};

/// Pages, forms, tables, receipts, cards, photographs, spreads and empty paper, `longest` pixels long.
/// `desk`: what it may nearly have the colour of.
PaperSheet makePaper(double longest, const Colour& desk, Chance& chance);

} // namespace sheetmap

#pragma once

#include "BookLook.h"
#include "CylinderModel.h"
#include "Remainder.h"

#include <array>
#include <memory>

namespace mirvak {

/// How a piece of the flat paper becomes pixels.
struct FlatPiece
{
    cv::Rect2d area; ///< flat
    cv::Size size;   ///< pixels
};

/// With a size at which no detail of the picture is lost.
FlatPiece pieceOf(const BookLook& look, const CylinderModel& model, const cv::Rect2d& area);

using Remainders = std::array<std::unique_ptr<Remainder>, 2>; ///< left, right; none: nothing is left

/// Takes each pixel of the piece from the picture once, by cubic interpolation (Keys, Cubic convolution
/// interpolation for digital image processing, 1981).
/// @param rgb  CV_8UC3, what the look was made of
cv::Mat remapPiece(const cv::Mat& rgb,
                   const BookLook& look,
                   const CylinderModel& model,
                   const Remainders& remainders,
                   const FlatPiece& piece);

} // namespace mirvak

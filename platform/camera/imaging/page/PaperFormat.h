#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// A usual size of sheets, in millimetres.
struct PaperFormat
{
    double shortSide, longSide;
    bool isCard;   ///< printed up to its edges
    double rarity; ///< how much less usual than A4 and Letter, as the logarithm of a factor in size
};

/// The format (A3 to A6, B5, Letter, Legal, an identity card, either way round) that both sides, in
/// millimetres, match within 2 %; null when there is none. The result lives for ever.
const PaperFormat* formatOfSize(double width, double height);

/// The format whose proportions a sheet has within 2 %; null when there is none. A4 and A5 have the same, so
/// the nearest in size is taken, and a usual one before a rare one.
/// @param sheet    size of the flat sheet in pixels of `picture`
/// @param picture  size in pixels of a picture that shows about as much as a document camera does, a little
///                 more than A4
const PaperFormat* formatOfShape(const cv::Size2d& sheet, const cv::Size& picture);

} // namespace mirvak

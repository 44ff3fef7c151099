#pragma once

#include "CylinderModel.h"
#include "Letters.h"

#include <optional>
#include <vector>

namespace mirvak {

/// Points that lie on one straight line of the flat paper.
struct Track
{
    std::vector<cv::Point2d> points; ///< frame
    bool isRight = false;
    bool isRuling = false; ///< along the spine: all have the same s; else the same v
    double weight = 1;
};

/// Letters that stand beside each other.
using Chain = std::vector<Letter>;

/// Links each letter with the one beside it; chains of a few letters at least.
/// @param lean  slope of the lines, dy per dx, where nothing else is known
std::vector<Chain> chainLetters(const Letters& letters, double lean);
/// Whether letters stand closer above each other than beside each other: text that runs downwards.
bool runsDown(const Letters& letters);

/// The feet and the heads of each chain, parted at the spine.
/// @param spine  whether there are two pages; without it all is the right one's
std::vector<Track>
tracksOf(const std::vector<Chain>& chains, const BookLook& look, const CylinderModel& model, bool isSpread);
/// Begins and ends of lines that stand below each other on the flat paper.
std::vector<Track>
marginsOf(const std::vector<Chain>& chains, const BookLook& look, const CylinderModel& model, bool isSpread);

/// On which page a point of the frame is.
bool isOnRight(const CylinderModel& model, const cv::Point2d& frame);

} // namespace mirvak

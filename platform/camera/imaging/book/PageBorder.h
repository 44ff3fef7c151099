#pragma once

#include "FlatView.h"
#include "TextTracks.h"

#include <optional>
#include <vector>

namespace mirvak {

/// Where a page of an open book ends.
struct PageBorder
{
    cv::Rect2d area;                                          ///< flat; one side lies on the spine
    bool hasTop = false, hasBottom = false, hasOuter = false; ///< an end that was seen, not the frame's
    std::vector<Track> edges;                                 ///< points of the ends that were seen
    bool isBright = false;                                    ///< paper, not the night
    bool isPicture = false;                                   ///< to all its ends
    double paper = 0; ///< share of the area that looks like paper or print on it, 0 to 1
};

/// Looks outward from what is certainly page for the end of the paper: where its colour ends, or for a line
/// across the whole page.
/// @param text  flat: what is printed on the page; empty when nothing is known
/// @param hasSpine  false: the only page, with an end on either side
/// @param reach  pixels of the view by which an edge may be off its line
PageBorder findBorder(const FlatView& view,
                      const CylinderModel& model,
                      bool isRight,
                      bool hasSpine,
                      const cv::Rect2d& text,
                      int reach);

/// The page of that side if it is a picture to its ends: with most sides where the other page has them.
/// @param other  flat: the page on the other side
std::optional<PageBorder> findPicture(
    const FlatView& view, const CylinderModel& model, bool isRight, const cv::Rect2d& other, int reach);

} // namespace mirvak

#pragma once

#include "BookLook.h"
#include "CylinderModel.h"

namespace mirvak {

/// A small picture of the paper laid flat, with what lies around it.
struct FlatView
{
    cv::Mat colours;  ///< CV_8UC3
    cv::Mat seen;     ///< CV_8UC1: 255 where the frame has it
    cv::Rect2d area;  ///< flat, of the whole picture
    double scale = 1; ///< pixels to a unit of the flat paper

    cv::Point2d toFlat(const cv::Point2d& pixel) const
    {
        return {area.x + (pixel.x + 0.5) / scale, area.y + (pixel.y + 0.5) / scale};
    }
    cv::Point2d toPixel(const cv::Point2d& flat) const
    {
        return {(flat.x - area.x) * scale - 0.5, (flat.y - area.y) * scale - 0.5};
    }
};

/// The page of that side with all that the frame shows around it, about 500 pixels to the frame's longer
/// side.
FlatView viewPage(const BookLook& look, const CylinderModel& model, bool isRight);

} // namespace mirvak

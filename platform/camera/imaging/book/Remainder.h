#pragma once

#include "CylinderModel.h"
#include "TextTracks.h"

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// What a cylinder leaves of the lines' bends: a smooth small shift of v over one flat page.
class Remainder
{
public:
    /// @param area  flat
    Remainder(const CylinderModel& model,
              const std::vector<Track>& tracks,
              bool isRight,
              const cv::Rect2d& area,
              double noise);
    /// To be added to v of a flat point to get where the model has it.
    double at(const cv::Point2d& flat) const;

private:
    static constexpr int across = 8, down = 4;
    std::array<double, across> wavesAt(double s) const;
    std::array<double, down> powersAt(double v) const;
    cv::Rect2d area_;
    std::array<double, static_cast<size_t>(across* down)> shares_{};
};

} // namespace mirvak

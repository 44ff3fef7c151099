#pragma once

#include "CylinderModel.h"
#include "Spine.h"
#include "TextTracks.h"

#include <opencv2/core.hpp>

#include <optional>
#include <vector>

namespace mirvak {

/// Fits a cylinder to lines that are straight on the flat paper: Levenberg and Marquardt's method with the
/// place of each line eliminated and Tukey's weights (the idea: Kim, Koo, Cho: Document dewarping via
/// text-line based optimization, Pattern Recognition 48, 2015).
/// @param model  where to begin; receives the result, prepared
/// @param spine  what the model's spine has to lie on, if there is one
/// @param noise  usual deviation of a point of a line, frame
/// @return median of the deviations, frame
double fitBook(CylinderModel& model,
               const std::vector<Track>& tracks,
               const std::optional<Spine>& spine,
               double noise);

} // namespace mirvak

#pragma once

#include "Chance.h"

#include <array>
#include <optional>

namespace sheetmap {

using Corners = std::array<cv::Point2d, 4>;

/// One small picture of which is known what the map of it should say.
struct MapScene
{
    cv::Mat picture;              ///< 8-bit RGB
    std::optional<Corners> sheet; ///< the topmost whole one, clockwise; pixel centres at whole numbers
    cv::Mat unclear;              ///< CV_8UC1, not 0 where another sheet lies beside it
};

constexpr int sceneWidth = 320, sceneHeight = 240;

/// A desk, mostly with a sheet, by `seed`: other sheets below, things over it, light, shadows, reflections,
/// blur, noise and coding.
MapScene makeMapScene(unsigned seed, bool withPatterns = true);

} // namespace sheetmap

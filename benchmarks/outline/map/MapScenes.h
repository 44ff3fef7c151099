#pragma once

#include "Table.h"

#include <optional>

namespace sheetmap {

/// One small picture of which is known what the map of it should say.
struct MapScene
{
    cv::Mat picture;              ///< 8-bit RGB
    std::optional<Corners> sheet; ///< the topmost whole one, clockwise
    cv::Mat unclear;              ///< CV_8UC1, not 0 where another sheet lies beside it
};

/// A desk, mostly with a sheet, by `seed`: other sheets below, things over it, light, shadows, reflections,
/// blur, noise and coding.
MapScene makeMapScene(unsigned seed, bool withPatterns = true);
/// A sheet that lies partly upon a larger one, by `seed`; half of them without a shadow.
MapScene makeStackScene(unsigned seed);

} // namespace sheetmap

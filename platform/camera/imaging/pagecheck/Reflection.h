#pragma once

#include "ShotLook.h"

#include <vector>

namespace mirvak {

/// Finds lamps that are mirrored by a page. Such a spot has more light than the sensor can count, though the
/// paper around it has not, and ends in soft flanks; what is printed in white, and white paper itself, ends
/// within the width of an edge or not at all. Keeps its buffers; one thread at a time.
class Reflection
{
public:
    bool isOn(const ShotLook& look);

private:
    bool endsSoftly(const ShotLook& look, const cv::Point2d& middle);
    bool
    isSoftRay(const ShotLook& look, const cv::Point2d& middle, const cv::Point2d& direction, bool& valid);

    cv::Mat spots_, labels_, statistics_, centroids_;
    std::vector<int> envelope_;
};

} // namespace mirvak

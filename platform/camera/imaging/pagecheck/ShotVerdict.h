#pragma once

#include "Outline.h"
#include "Reflection.h"
#include "Rest.h"
#include "Sharpness.h"
#include "ShotLook.h"
#include "VerdictHold.h"

#include <opencv2/core.hpp>

#include <chrono>
#include <optional>

namespace mirvak {

/// Tells in a stream of frames whether a page that is captured now will be good: found for sure, whole,
/// sharp, at rest, lit and without a lamp's reflection. Looks at a small part of the pixels of each frame,
/// not at everything in each of them, and keeps its buffers. One thread at a time.
class ShotVerdict
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// `page`: what OutlineFinder found in this very frame, `mayLeave`: what it says of a page that it did
    /// not find. `taken`: when; the calls come in its order. A pause of a second and another size of frame
    /// begin anew.
    Verdict judge(const cv::Mat& rgb, const std::optional<Outline>& page, Time taken, bool mayLeave = false);

private:
    Flaws flawsOf(const cv::Mat& rgb, const Outline& page, Time taken);

    ShotLook look_;
    Sharpness sharpness_;
    Reflection reflection_;
    Rest rest_;
    VerdictHold hold_;
    Flaws flaws_{}; ///< of the last frame with a page
    double noise_ = 0;
    unsigned frame_ = 0;
    cv::Size size_;
    Time last_{};
};

} // namespace mirvak

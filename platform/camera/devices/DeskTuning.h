#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// How the set controls of a virtual camera change its pictures; as made, not at all.
struct DeskTuning
{
    double blur = 0; ///< how far the focus is off, as a share of its range
    double light = 1;
    double red = 1, blue = 1; ///< white balance
    int brightness = 0;       ///< grey levels
    double contrast = 1;
    double saturation = 1;
    double sharpness = 0; ///< what is added of the fine structure; may be negative
    double gamma = 1;     ///< above 1 dark parts become lighter

    bool isNeutral() const { return *this == DeskTuning(); }
    /// CV_8UC3, red, green, blue; in place.
    void apply(cv::Mat& rgb) const;

    bool operator==(const DeskTuning& other) const
    {
        return blur == other.blur && light == other.light && red == other.red && blue == other.blue &&
               brightness == other.brightness && contrast == other.contrast &&
               saturation == other.saturation && sharpness == other.sharpness && gamma == other.gamma;
    }
};

} // namespace mirvak

#pragma once

#include "Landmarks.h"

#include <opencv2/core.hpp>

namespace face {

/// What in a colour picture tells of a screen or a print that is held before the camera. None proves
/// anything: a bookshelf has frames, a good copy has no grid.
struct CopySigns
{
    bool grid =
        false; ///< a pattern of one frequency over the face, as pixels of a screen or dots of a print make it
    bool bands = false; ///< bars across the picture, as a screen's refresh leaves them
    bool frame = false; ///< straight edges on both sides of the face and above or below it
    bool flat = false;  ///< face and surroundings equally sharp

    /// Those that hardly a living face's picture has; a small camera is as sharp everywhere.
    int strong() const { return grid + bands + frame; }
};

/// `gray` is CV_8U.
CopySigns copySigns(const cv::Mat& gray, const Landmarks& points);

} // namespace face

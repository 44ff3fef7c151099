#pragma once

#include "Outline.h"
#include "Reduction.h"

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// A picture and the page in it, as what judges a shot looks at them: cells of brightness over the whole
/// picture, and the picture's own pixels at a few places. Keeps its buffers; one thread at a time.
class ShotLook
{
public:
    /// `rgb` is looked at, not copied, until the next build().
    void build(const cv::Mat& rgb, const Outline& page);

    const cv::Mat& picture() const { return picture_; }
    const Outline& page() const { return page_; }
    /// CV_8UC1: brightness of each cell, and that of its darkest channel; 255 in inPage() where the cell lies
    /// on the page.
    const cv::Mat& cells() const { return brightness_; }
    const cv::Mat& darkestChannel() const { return darkest_; }
    const cv::Mat& inPage() const { return inPage_; }
    /// Pixels of the picture a cell, both ways.
    int cellSize() const { return reduction_.factor(); }
    cv::Point2d toPicture(const cv::Point& cell) const { return reduction_.toFull(cell); }
    /// The longer side of the picture.
    int longestSide() const { return std::max(picture_.cols, picture_.rows); }
    /// Brightness between the pixels, 0 to 255; outside the picture that of its border.
    float brightnessAt(const cv::Point2d& place) const;

    /// One place in each of the page's 6 x 6 zones: the cell that differs most or least from its neighbours.
    /// Zones without a whole cell are left out.
    std::vector<cv::Point> places(bool mostTexture) const;

private:
    cv::Mat picture_;
    Outline page_;
    Reduction reduction_;
    cv::Mat brightness_, darkest_, inPage_;
};

/// The value below which `share` of them lie; 0 of none. Changes their order.
float quantile(std::vector<float>& values, double share);

} // namespace mirvak

#pragma once

#include "Outline.h"

#include <opencv2/core.hpp>

#include <optional>
#include <vector>

namespace mirvak {

/// Finds the page in each frame of a stream. While the picture stays as it was when it was last searched, the
/// answer of that search holds: all of the picture is looked at by samples, and the sides of the outline
/// closely. At least each third frame is searched, so that nothing wrong is shown for longer than two. For a
/// single capture use findOutline(). Keeps its buffers; one thread at a time.
class OutlineWatch
{
public:
    /// @param rgb  CV_8UC3, any size; of another size than the one before it is searched
    /// @return the page in coordinates of `rgb`, as OutlineFinder::find()
    std::optional<Outline> find(const cv::Mat& rgb);
    /// Whether the last find() searched rather than repeated its answer.
    bool searched() const { return age_ == 0; }

private:
    struct Sample
    {
        cv::Point place;
        cv::Vec3i seen; ///< sums over a patch
    };
    void choosePlaces(const cv::Mat& rgb);
    bool looksTheSame(const cv::Mat& rgb) const;

    OutlineFinder finder_;
    std::optional<Outline> page_;
    cv::Size size_;
    std::vector<Sample> everywhere_, beside_; ///< a grid over the picture; both hands of the outline's sides
    int age_ = 0;                             ///< frames since the last search
};

} // namespace mirvak

#pragma once

#include "Outline.h"

#include <opencv2/core.hpp>

#include <chrono>
#include <optional>
#include <vector>

namespace mirvak {

/// Finds the page in each frame of a stream. While the picture stays as it was when it was last searched, the
/// answer of that search holds: all of the picture is looked at by samples, and the sides of the outline
/// closely. At least each third frame is searched, so that nothing wrong is shown for longer than two. Where
/// a camera's frames change, each second one is searched, each third where there are more than twenty a
/// second: an outline one frame late is not seen, frames that come late are. For a single capture use
/// findOutline(). Keeps its buffers; one thread at a time.
class OutlineWatch
{
public:
    using Time = std::chrono::steady_clock::time_point;

    /// @param rgb    CV_8UC3, any size; of another size than the one before it is searched
    /// @param taken  when the camera delivered it; without that it is a picture of its own, not a frame that
    ///               follows the last one
    /// @return the page in coordinates of `rgb`, as OutlineFinder::find()
    std::optional<Outline> find(const cv::Mat& rgb, std::optional<Time> taken = {});
    /// As OutlineFinder::mayLeavePicture(), of the last search.
    bool mayLeavePicture() const { return finder_.mayLeavePicture(); }
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
    bool followsTheSearched(std::optional<Time> taken) const;

    OutlineFinder finder_;
    std::optional<Outline> page_;
    cv::Size size_;
    std::optional<Time> searchedAt_;
    std::vector<Sample> everywhere_, beside_; ///< a grid over the picture; both hands of the outline's sides
    int age_ = 0;                             ///< frames since the last search
};

} // namespace mirvak

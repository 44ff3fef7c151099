#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace mirvak {

/// The four corners of a page in a picture: clockwise as seen, the first is the one nearest to the top left.
/// Coordinates are pixels with (0, 0) in the middle of the first pixel; a corner may lie slightly outside.
struct Outline
{
    std::array<cv::Point2d, 4> corners;
    double confidence = 0; ///< 0 to 1: how certain it is that a sheet lies just there
};

/// From here on one outline among those of several sheets is believed.
constexpr double confidentOutline = 0.6;

/// Whether the side between two corners follows the border of a picture of that size within `tolerance`
/// pixels: the page runs out of the picture there.
bool liesOnBorder(const cv::Point2d& from, const cv::Point2d& to, const cv::Size& picture, double tolerance);

/// Finds the page that lies before the camera. Works on a reduced copy and keeps its buffers: cheap enough
/// for every frame of a stream. One thread at a time.
class OutlineFinder
{
public:
    OutlineFinder();
    ~OutlineFinder();
    OutlineFinder(const OutlineFinder&) = delete;
    OutlineFinder& operator=(const OutlineFinder&) = delete;

    /// Of a sheet upon another one the upper one, never a part of what is printed on it.
    /// @return nothing when it is less likely that it is right than that it is not. From a confidence of 0.8
    /// on it is nearly always right.
    std::optional<Outline> find(const cv::Mat& rgb);
    /// Whether the last find() answered nothing, but a page seems to lie there that runs out of the picture:
    /// too little of it is seen to tell where it ends.
    bool mayLeavePicture() const { return mayLeave_; }

private:
    std::optional<Outline> choose(const std::vector<Outline>& outlines) const;

    bool mayLeave_ = false;
    struct Work;
    std::unique_ptr<Work> work_;
};

/// The same with buffers kept per thread.
std::optional<Outline> findOutline(const cv::Mat& rgb);

/// Moves each side of a found outline onto the edge in the full picture, to fractions of a pixel. A side
/// whose edge cannot be seen stays.
Outline refineOutline(const cv::Mat& rgb, const Outline& outline);

} // namespace mirvak

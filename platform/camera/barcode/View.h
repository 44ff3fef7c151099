#pragma once

#include <opencv2/core.hpp>

#include <array>

namespace mirvak {

/// The grey frame in its own size, half and a quarter, all CV_8UC1.
class GreyFrame
{
public:
    static constexpr int levelCount = 3;
    explicit GreyFrame(const cv::Mat& rgb);
    double noise() const { return noise_; } ///< standard deviation, grey values
    const cv::Mat& level(int halvings) const { return levels_[static_cast<size_t>(halvings)]; }
    cv::Size size() const { return levels_[0].size(); }

private:
    std::array<cv::Mat, levelCount> levels_;
    double noise_ = 0;
};

/// A picture for the decoders: a part of the frame, turned and scaled.
struct View
{
    cv::Size size;         ///< pixels of the view
    cv::Matx23d toFrame;   ///< from pixels of the view to pixels of the frame
    bool inverted = false; ///< dark becomes light
    bool sharpened = false;
    double smoothing = 0;    ///< sigma against noise, in pixels of the frame
    bool smoothedUp = false; ///< rows are averaged: that takes nothing away from upright bars

    /// The whole frame, reduced to the size of one of its levels.
    static View ofLevel(const GreyFrame& frame, int halvings);
    /// The upright picture of a rectangle that lies `turned` degrees clockwise in the frame; `scale` is in
    /// pixels of the view per pixel of the frame.
    static View ofBox(const cv::RotatedRect& box, double scale);

    cv::Point2d inFrame(const cv::Point2d& point) const;
};

/// Draws the view into `canvas`, CV_8UC1 of the view's size. What lies beyond the frame repeats its border.
void draw(const GreyFrame& frame, const View& view, cv::Mat& canvas);

} // namespace mirvak

#pragma once

#include <opencv2/core.hpp>

namespace mirvak {

/// Level and tint of a colour: the mean of its channels, and the shares of red and blue in their sum.
struct Tint
{
    float level, red, blue;
};
Tint tintOf(const cv::Vec3f& colour);

/// Median tint and level of the brighter places of a picture (CV_32FC3): most of them are paper.
Tint brightPaper(const cv::Mat& colours);
/// Whether the shares of two colours differ by less than `tolerance`.
bool isNear(const Tint& a, const Tint& b, double tolerance);

/// The tint of the paper under the light, as a quadratic surface over the picture.
class TintSurface
{
public:
    explicit TintSurface(const cv::Size& size) : size_(size) {}

    /// Robust least squares, reweighted (Beaton and Tukey 1974), so that the majority of the paper decides.
    /// @param colours  CV_32FC3  @param mask  CV_8UC1, 255: taken for paper  @param start  its usual tint
    void fit(const cv::Mat& colours, const cv::Mat& mask, const Tint& start);

    /// The level is 0.
    Tint at(int x, int y) const;

private:
    using Terms = cv::Matx<double, 6, 1>;

    Terms termsAt(int x, int y) const;

    cv::Size size_;
    Terms red_ = Terms::zeros(), blue_ = Terms::zeros();
};

} // namespace mirvak

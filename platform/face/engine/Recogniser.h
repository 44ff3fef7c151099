#pragma once

#include "Landmarks.h"
#include "Weights.h"

#include <opencv2/dnn.hpp>

#include <vector>

namespace face {

/// Describes faces by numbers: those of one person point into nearly the same direction. One thread at a
/// time.
class Recogniser
{
public:
    static constexpr int chipSide = 112; ///< pixels
    static constexpr int length = 192;

    /// Throws BrokenWeights or cv::Exception.
    explicit Recogniser(const Weights& weights);

    /// The face upright in a square, eyes, nose and mouth where the network was taught to expect them; `zoom`
    /// above 1 shows it larger, about the middle of these points.
    static cv::Mat chipOf(const cv::Mat& rgb, const Landmarks& points, double zoom = 1);
    /// How far eyes, nose and mouth are from where a face would have them: mean distance as a share of that
    /// of the eyes. Below 0.2 for faces, also those that look aside; above for what is none.
    static double misfit(const Landmarks& points);

    /// @return 1 x 192, CV_32F, of length 1: the mean of the face a little smaller and the mirror image of
    /// the face a little larger. What the network says by chance of the one, it does not say of the other.
    cv::Mat describe(const cv::Mat& rgb, const Landmarks& points);
    /// What the network itself says of chips: one row for each.
    cv::Mat numbersOf(const std::vector<cv::Mat>& chips);

private:
    cv::dnn::Net net_;
};

} // namespace face

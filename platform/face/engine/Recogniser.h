#pragma once

#include "Landmarks.h"
#include "Weights.h"

#include <opencv2/dnn.hpp>

namespace face {

/// Describes faces by numbers: those of one person point into nearly the same direction. One thread at a time.
class Recogniser
{
public:
    static constexpr int chipSide = 112;
    static constexpr int length = 192;

    /// Throws BrokenWeights or cv::Exception.
    explicit Recogniser(const Weights& weights);

    /// The face upright in a square, eyes, nose and mouth where the network was taught to expect them.
    static cv::Mat chipOf(const cv::Mat& rgb, const Landmarks& points);

    /// How far eyes, nose and mouth are from where a face would have them: mean distance as a share of that of the
    /// eyes. Below 0.2 for faces, also those that look aside; above for what is none.
    static double misfit(const Landmarks& points);

    /// @return 1 x 192, CV_32F, of length 1: the mean of the chip and its mirror image
    cv::Mat describe(const cv::Mat& chip);

private:
    cv::dnn::Net net_;
};

} // namespace face

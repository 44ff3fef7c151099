#pragma once

#include "Landmarks.h"
#include "Weights.h"

#include <opencv2/dnn.hpp>

namespace face {

/// Finds the landmarks of a face. One thread at a time.
class LandmarkFinder
{
public:
    /// Throws BrokenWeights or cv::Exception.
    explicit LandmarkFinder(const Weights& weights);

    /// Looks twice: what the first look tells of the face's tilt sets it upright for the second.
    /// @return false when nothing of the box lies in the picture
    bool find(const cv::Mat& rgb, const cv::Rect2f& box, Landmarks& points);

private:
    Landmarks look(const cv::Mat& square);

    cv::dnn::Net net_;
};

} // namespace face

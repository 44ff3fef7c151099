#pragma once

#include "Weights.h"

#include <opencv2/dnn.hpp>

#include <vector>

namespace face {

struct FoundFace
{
    cv::Rect2f box;       ///< pixels of the picture; from the brows to the chin; may reach beyond the edge
    float confidence = 0; ///< up to 1; from 0.5 on it is likely one
};

/// Finds the faces of a picture. One thread at a time.
class FaceDetector
{
public:
    /// Throws BrokenWeights or cv::Exception.
    explicit FaceDetector(const Weights& weights);

    /// The ways to look at a picture, the most promising first: in several sizes, and with its edges
    /// continued. Faces that fill it, or that are cut off, are missed at first sight.
    static constexpr int looks = 6;

    /// What the detector takes for faces, the largest first, from a confidence of 0.3 on.
    std::vector<FoundFace> find(const cv::Mat& rgb, int look);

private:
    std::vector<FoundFace> findAt(const cv::Mat& rgb, int longerSide);

    cv::dnn::Net net_;
};

} // namespace face

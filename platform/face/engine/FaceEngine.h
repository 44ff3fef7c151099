#pragma once

#include "FaceDetector.h"
#include "LandmarkFinder.h"
#include "Recogniser.h"

#include <string>
#include <vector>

namespace face {

struct Face
{
    FoundFace found;
    Landmarks points;
};

/// The three networks together. One thread at a time.
class FaceEngine
{
public:
    /// Takes the weights from a folder. Throws BrokenWeights or cv::Exception.
    explicit FaceEngine(const std::string& folder);

    /// All faces of the picture, the largest first.
    std::vector<Face> find(const cv::Mat& rgb);
    /// As Recogniser::describe().
    cv::Mat describe(const cv::Mat& rgb, const Landmarks& points);

private:
    FaceDetector detector_;
    LandmarkFinder landmarks_;
    Recogniser recogniser_;
};

} // namespace face

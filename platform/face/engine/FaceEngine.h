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

    /// All faces of the picture, the largest first. One of which the detector is not sure counts only where
    /// there is no other, and its points lie well.
    std::vector<Face> find(const cv::Mat& rgb);
    /// As Recogniser::describe().
    cv::Mat describe(const cv::Mat& rgb, const Landmarks& points);

private:
    std::vector<Face> findIn(const cv::Mat& rgb, std::vector<Face>& doubtful);
    std::vector<Face> look(const cv::Mat& rgb, int look, std::vector<Face>& doubtful);

    FaceDetector detector_;
    LandmarkFinder landmarks_;
    Recogniser recogniser_;
};

} // namespace face

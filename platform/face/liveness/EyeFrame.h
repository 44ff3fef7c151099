#pragma once

#include "Landmarks.h"
#include "Similarity.h"

namespace face {

/// Places of a face whatever its size and tilt: the origin is between the eyes, x goes along them, y down to
/// the mouth, both in distances between the eyes.
class EyeFrame
{
public:
    explicit EyeFrame(const Landmarks& points)
    {
        const cv::Point2d middle = (leftEye(points) + rightEye(points)) / 2;
        const cv::Point2d along = rightEye(points) - leftEye(points);
        ontoPicture_ = {along.x, along.y, middle.x, middle.y};
    }

    /// Pixels of the picture.
    cv::Point2f at(double x, double y) const
    {
        return ontoPicture_({static_cast<float>(x), static_cast<float>(y)});
    }
    double unit() const { return ontoPicture_.scale(); } ///< pixels between the eyes

private:
    Similarity ontoPicture_;
};

} // namespace face

#pragma once

#include "Landmarks.h"

#include <opencv2/core.hpp>

#include <optional>

namespace face {

/// Hints whether faces are living ones, from the pictures of an infrared and a colour camera, one after the
/// other and of one scene. One thread at a time.
class Liveness
{
public:
    /// 0 surely not, 19 not known, 50 and more living. A picture without colours counts as an infrared one.
    int judge(const cv::Mat& rgb, const Landmarks& points);
    /// In this picture no face was found.
    void noFace(const cv::Mat& rgb);

private:
    /// What the last infrared picture showed, in shares of its width, so that cameras of other sizes agree.
    struct Seen
    {
        cv::Point2d middle; ///< between the eyes
        double eyeDistance = 0;
        int score = 0;
    };
    static Seen seenIn(const cv::Mat& rgb, const Landmarks& points);
    bool isWhereInfraredHadIt(const Seen& seen) const;
    int judgeColour(const cv::Mat& rgb, const Landmarks& points) const;

    std::optional<Seen> infrared_;
};

} // namespace face

#include "Liveness.h"

#include "CopySigns.h"
#include "InfraredLook.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace face {

namespace {

constexpr int notKnown = 19;
constexpr int living = 50;

// An infrared camera has no colours; what JPEG makes of none differs by a level or two.
bool isWithoutColours(const cv::Mat& rgb)
{
    constexpr double mostLevels = 3;
    cv::Mat parts[3];
    cv::split(rgb, parts);
    const auto pixels = static_cast<double>(rgb.total());
    return cv::norm(parts[0], parts[1], cv::NORM_L1) < mostLevels * pixels &&
           cv::norm(parts[2], parts[1], cv::NORM_L1) < mostLevels * pixels;
}

cv::Mat grayOf(const cv::Mat& rgb)
{
    cv::Mat gray;
    cv::cvtColor(rgb, gray, cv::COLOR_RGB2GRAY);
    return gray;
}

} // namespace

Liveness::Seen Liveness::seenIn(const cv::Mat& rgb, const Landmarks& points)
{
    const double width = rgb.cols;
    return {cv::Point2d(leftEye(points) + rightEye(points)) / (2 * width), eyeDistance(points) / width};
}

// The two cameras stand side by side and see the face a little apart.
bool Liveness::isWhereInfraredHadIt(const Seen& seen) const
{
    constexpr double apart = 1.5, largest = 1.6;
    if (!infrared_)
        return false;
    const double ratio = seen.eyeDistance / infrared_->eyeDistance;
    return cv::norm(seen.middle - infrared_->middle) < apart * seen.eyeDistance && ratio < largest &&
           ratio > 1 / largest;
}

int Liveness::judge(const cv::Mat& rgb, const Landmarks& points)
{
    if (!isWithoutColours(rgb))
        return judgeColour(rgb, points);
    infrared_ = seenIn(rgb, points);
    infrared_->score = infraredScore(grayOf(rgb), points);
    return infrared_->score;
}

void Liveness::noFace(const cv::Mat& rgb)
{
    if (isWithoutColours(rgb))
        infrared_.reset();
}

int Liveness::judgeColour(const cv::Mat& rgb, const Landmarks& points) const
{
    constexpr int lessForASign = 6, lessForFlat = 3;
    const CopySigns signs = copySigns(grayOf(rgb), points);
    if (signs.strong() == 0 && isWhereInfraredHadIt(seenIn(rgb, points)) && infrared_->score >= living)
        return infrared_->score;
    return std::max(0, notKnown - lessForASign * signs.strong() - (signs.flat ? lessForFlat : 0));
}

} // namespace face

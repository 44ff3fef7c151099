#include "LandmarkFinder.h"

#include "Input.h"
#include "Networks.h"
#include "Picture.h"
#include "Similarity.h"

#include <cmath>

namespace face {

namespace {

constexpr int side = 112;
const cv::Scalar mean(122.782, 117.001, 104.298);
constexpr double divisor = 255;

// Where a square of `side` pixels lies in the picture: around the middle of the box, turned by the angle.
Similarity squareAround(const cv::Rect2f& box, double angle)
{
    const double scale = std::max(box.width, box.height) / side;
    const double a = scale * std::cos(angle);
    const double b = scale * std::sin(angle);
    const double half = side / 2.0;
    const cv::Point2d middle(box.x + box.width / 2, box.y + box.height / 2);
    return {a, b, middle.x - a * half + b * half, middle.y - b * half - a * half};
}

double tiltOf(const Landmarks& points)
{
    const cv::Point2f line = rightEye(points) - leftEye(points);
    return std::atan2(line.y, line.x);
}

} // namespace

LandmarkFinder::LandmarkFinder(const Weights& weights) : net_(landmarkNet(weights))
{
    look(cv::Mat(side, side, CV_8UC3, mean));
}

Landmarks LandmarkFinder::look(const cv::Mat& square)
{
    net_.setInput(inputOf({square}, mean, divisor));
    const cv::Mat output = net_.forward();
    if (output.total() != 2 * landmarkCount)
        throw BrokenWeights("the landmarks' weights are those of another network");
    Landmarks points;
    const auto* numbers = output.ptr<float>();
    for (size_t i = 0; i < landmarkCount; ++i)
        points[i] = cv::Point2f(numbers[2 * i], numbers[2 * i + 1]) * static_cast<float>(side);
    return points;
}

bool LandmarkFinder::find(const cv::Mat& rgb, const cv::Rect2f& box, Landmarks& points)
{
    if (inside(box, rgb).empty())
        return false;
    constexpr int looks = 2;
    double angle = 0;
    for (int i = 0; i < looks; ++i) {
        const Similarity ontoPicture = squareAround(box, angle);
        points = look(cutOut(rgb, ontoPicture, cv::Size(side, side)));
        for (cv::Point2f& point : points)
            point = ontoPicture(point);
        angle = tiltOf(points);
    }
    return true;
}

} // namespace face

#include "Recogniser.h"

#include "Input.h"
#include "Networks.h"
#include "Similarity.h"

#include <cmath>

namespace face {

namespace {

constexpr double mean = 127.5;
constexpr double divisor = 128;

// Left eye, right eye, tip of the nose, corners of the mouth in the chip: part of the training.
const std::vector<cv::Point2f> places{
    {38.2946F, 51.6963F}, {73.5318F, 51.5014F}, {56.0252F, 71.7366F}, {41.5493F, 92.3655F}, {70.7299F, 92.2041F}};

std::vector<cv::Point2f> fivePoints(const Landmarks& points)
{
    return {leftEye(points),
            rightEye(points),
            points[noseTip],
            points[leftMouthCorner],
            points[rightMouthCorner]};
}

} // namespace

Recogniser::Recogniser(const Weights& weights) : net_(recogniserNet(weights))
{
    const cv::Mat trial = describe(cv::Mat(chipSide, chipSide, CV_8UC3, cv::Scalar::all(mean)));
    if (trial.total() != length || !cv::checkRange(trial))
        throw BrokenWeights("the recogniser's weights are those of another network");
}

cv::Mat Recogniser::chipOf(const cv::Mat& rgb, const Landmarks& points)
{
    return cutOut(rgb, nearest(places, fivePoints(points)), cv::Size(chipSide, chipSide));
}

double Recogniser::misfit(const Landmarks& points)
{
    const std::vector<cv::Point2f> found = fivePoints(points);
    const Similarity ontoPicture = nearest(places, found);
    double squares = 0;
    for (size_t i = 0; i < places.size(); ++i)
        squares += std::pow(cv::norm(ontoPicture(places[i]) - found[i]), 2);
    const double betweenEyes = cv::norm(places[1] - places[0]) * ontoPicture.scale();
    return std::sqrt(squares / static_cast<double>(places.size())) / betweenEyes;
}

cv::Mat Recogniser::describe(const cv::Mat& chip)
{
    cv::Mat mirrored;
    cv::flip(chip, mirrored, 1);
    net_.setInput(inputOf({chip, mirrored}, cv::Scalar::all(mean), divisor));
    const cv::Mat numbers = net_.forward().reshape(1, 2);
    const cv::Mat sum = numbers.row(0) + numbers.row(1);
    return sum / cv::norm(sum);
}

} // namespace face

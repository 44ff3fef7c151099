#include "Recogniser.h"

#include "Input.h"
#include "Networks.h"
#include "Picture.h"
#include "Similarity.h"

#include <cmath>

namespace face {

namespace {

constexpr double mean = 127.5;
constexpr double divisor = 128;

// Left eye, right eye, tip of the nose, corners of the mouth in the chip: part of the training.
const std::vector<cv::Point2f> places{{38.2946F, 51.6963F},
                                      {73.5318F, 51.5014F},
                                      {56.0252F, 71.7366F},
                                      {41.5493F, 92.3655F},
                                      {70.7299F, 92.2041F}};

const cv::Point2f middle(56, 74);

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
    const cv::Mat trial = numbersOf({cv::Mat(chipSide, chipSide, CV_8UC3, cv::Scalar::all(mean))});
    if (trial.cols != length || !cv::checkRange(trial))
        throw BrokenWeights("the recogniser's weights are those of another network");
}

cv::Mat Recogniser::chipOf(const cv::Mat& rgb, const Landmarks& points, double zoom)
{
    std::vector<cv::Point2f> zoomed;
    zoomed.reserve(places.size());
    for (const cv::Point2f place : places)
        zoomed.push_back(middle + (place - middle) * zoom);
    return lightened(cutOut(rgb, nearest(zoomed, fivePoints(points)), cv::Size(chipSide, chipSide)));
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

cv::Mat Recogniser::numbersOf(const std::vector<cv::Mat>& chips)
{
    net_.setInput(inputOf(chips, cv::Scalar::all(mean), divisor));
    return net_.forward().reshape(1, static_cast<int>(chips.size()));
}

cv::Mat Recogniser::describe(const cv::Mat& rgb, const Landmarks& points)
{
    constexpr double smaller = 0.94, larger = 1.06;
    cv::Mat mirrored;
    cv::flip(chipOf(rgb, points, larger), mirrored, 1);
    const cv::Mat numbers = numbersOf({chipOf(rgb, points, smaller), mirrored});
    const cv::Mat sum = numbers.row(0) + numbers.row(1);
    return sum / cv::norm(sum);
}

} // namespace face

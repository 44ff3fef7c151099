#include "Threshold.h"

#include "PaperModel.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int statisticsFactor = 2;   // mean and deviation change slowly: a quarter of the pixels tells them
constexpr double windowShare = 0.018; // of the longer side: about two lines of text
constexpr float sauvolaK = 0.22F, sauvolaRange = 110;
constexpr int surelyInk = 70, surelyPaper = 200; // levels of the evened picture
constexpr double largestSpeck = 0.00085;         // of the longer side: a third of a full stop

// Mean and deviation of the surroundings, on a grid of statisticsFactor pixels.
void localStatistics(const cv::Mat& grey, cv::Mat& mean, cv::Mat& deviation)
{
    cv::Mat small, squares;
    cv::resize(grey, small, {}, 1.0 / statisticsFactor, 1.0 / statisticsFactor, cv::INTER_NEAREST);
    const int longest = std::max(small.cols, small.rows);
    const int window = std::max(15, static_cast<int>(windowShare * longest) * 2 + 1);
    cv::boxFilter(small, mean, CV_32F, {window, window}, {-1, -1}, true, cv::BORDER_REFLECT);
    cv::sqrBoxFilter(small, squares, CV_32F, {window, window}, {-1, -1}, true, cv::BORDER_REFLECT);
    squares -= mean.mul(mean);
    cv::max(squares, 0, squares);
    cv::sqrt(squares, deviation);
}

cv::Mat localThreshold(const cv::Mat& grey)
{
    cv::Mat mean, deviation;
    localStatistics(grey, mean, deviation);
    cv::Mat limit(mean.size(), CV_8UC1);
    for (int y = 0; y < mean.rows; ++y) {
        for (int x = 0; x < mean.cols; ++x) {
            const float s =
                mean.at<float>(y, x) * (1 + sauvolaK * (deviation.at<float>(y, x) / sauvolaRange - 1));
            limit.at<unsigned char>(y, x) = static_cast<unsigned char>(
                std::clamp(s, static_cast<float>(surelyInk), static_cast<float>(surelyPaper)));
        }
    }
    cv::resize(limit, limit, grey.size(), 0, 0, cv::INTER_LINEAR);
    cv::Mat black;
    cv::compare(grey, limit, black, cv::CMP_LT);
    return black;
}

// Specks are what noise and dust leave; the dot of an i is several times as large.
void removeSpecks(cv::Mat& black, int largest)
{
    cv::Mat labels, boxes, centres;
    const int count = cv::connectedComponentsWithStats(black, labels, boxes, centres, 8, CV_32S);
    std::vector<unsigned char> keep(static_cast<size_t>(count), 255);
    keep[0] = 0;
    for (int i = 1; i < count; ++i) {
        if (boxes.at<int>(i, cv::CC_STAT_AREA) <= largest)
            keep[static_cast<size_t>(i)] = 0;
    }
    for (int y = 0; y < black.rows; ++y) {
        const int* label = labels.ptr<int>(y);
        unsigned char* out = black.ptr(y);
        for (int x = 0; x < black.cols; ++x)
            out[x] = keep[static_cast<size_t>(label[x])];
    }
}

} // namespace

void threshold(Image& image)
{
    const PaperModel model(image.pixels);
    Flattening how;
    how.whiteFrom = 1;
    how.noiseMargin = 0;
    flatten(image.pixels, model, how);
    cv::Mat grey;
    cv::cvtColor(image.pixels, grey, cv::COLOR_RGB2GRAY);
    cv::GaussianBlur(grey, grey, {3, 3}, 0);
    cv::Mat black = localThreshold(grey);
    const double side = largestSpeck * std::max(black.cols, black.rows);
    removeSpecks(black, std::max(3, static_cast<int>(side * side)));
    cv::bitwise_not(black, black);
    cv::cvtColor(black, image.pixels, cv::COLOR_GRAY2RGB);
}

} // namespace mirvak

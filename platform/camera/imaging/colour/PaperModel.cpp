#include "PaperModel.h"

#include "Bridge.h"
#include "PaperMask.h"
#include "Reduction.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int reducedSide = 400;     // about 0.7 mm of an A4 page a pixel
constexpr int closing = 9;           // pixels: broader than the strokes of a headline
constexpr int leastArea = 7;         // pixels across
constexpr float stillPaper = 0.965F; // of the paper's colour
constexpr double leastPaper = 0.02;  // of the picture

// The colours without what is thin and dark.
cv::Mat closed(const std::array<cv::Mat, 3>& planes)
{
    const cv::Mat kernel = cv::getStructuringElement(cv::MORPH_RECT, {closing, closing});
    std::array<cv::Mat, 3> bright;
    for (size_t c = 0; c < 3; ++c) {
        cv::GaussianBlur(planes[c], bright[c], {3, 3}, 0);
        cv::morphologyEx(bright[c], bright[c], cv::MORPH_CLOSE, kernel);
    }
    cv::Mat merged;
    cv::merge(bright.data(), 3, merged);
    merged.convertTo(merged, CV_32FC3);
    cv::GaussianBlur(merged, merged, {3, 3}, 0); // not rounded: edges of pale boxes are a few levels high
    return merged;
}

// With the paper's side of the edges, and what is too small to be an area.
cv::Mat shareOf(const cv::Mat& mask, const cv::Mat& colours, const cv::Mat& paper)
{
    cv::Mat near, share = mask.clone();
    cv::dilate(mask, near, cv::getStructuringElement(cv::MORPH_RECT, {leastArea, leastArea}));
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            if (!near.at<unsigned char>(y, x) || mask.at<unsigned char>(y, x))
                continue;
            const cv::Vec3f &seen = colours.at<cv::Vec3f>(y, x), &white = paper.at<cv::Vec3f>(y, x);
            const float least = std::min({seen[0] / white[0], seen[1] / white[1], seen[2] / white[2]});
            share.at<unsigned char>(y, x) = least > stillPaper ? 255 : 0;
        }
    }
    cv::morphologyEx(
        share, share, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_RECT, {leastArea, leastArea}));
    share.convertTo(share, CV_32F, 1.0 / 255);
    return share;
}

} // namespace

PaperModel::PaperModel(const cv::Mat& rgb)
{
    Reduction reduction;
    reduction.build(rgb, reducedSide);
    factor_ = reduction.factor();
    estimate(reduction.planes());
    measureNoise(rgb);
}

void PaperModel::estimate(const std::array<cv::Mat, 3>& planes)
{
    const cv::Mat colours = closed(planes);
    const Tint bright = brightPaper(colours);
    mask_ = paperMask(colours, bright);
    if (cv::countNonZero(mask_) < leastPaper * static_cast<double>(mask_.total())) {
        paper_ = cv::Mat(colours.size(), CV_32FC3, cv::Scalar::all(bright.level));
        share_ = cv::Mat(colours.size(), CV_32F, cv::Scalar(1));
        return;
    }
    const cv::Mat whole = mask_;
    // The outermost paper pixels hold some of what lies beside them.
    cv::Mat inner;
    cv::erode(mask_, inner, cv::Mat(), {-1, -1}, 2);
    if (cv::countNonZero(inner) >= leastPaper * static_cast<double>(mask_.total()))
        mask_ = inner;
    cv::Mat weights;
    mask_.convertTo(weights, CV_32F, 1.0 / 255);
    paper_ = bridged(colours, weights);
    cv::GaussianBlur(paper_, paper_, {0, 0}, 2.5, 2.5, cv::BORDER_REPLICATE);
    cv::max(paper_, cv::Scalar::all(darkest), paper_);
    share_ = shareOf(whole, colours, paper_);
}

// The median difference of neighbours is blind to print. Two pixels apart: nearer ones are smoothed alike by
// the camera.
void PaperModel::measureNoise(const cv::Mat& rgb)
{
    std::array<int, 256> histogram{};
    int count = 0;
    for (int y = 0; y < mask_.rows; ++y) {
        for (int x = 0; x < mask_.cols; ++x) {
            const int px = x * factor_, py = y * factor_;
            if (!mask_.at<unsigned char>(y, x) || px + 2 >= rgb.cols)
                continue;
            const unsigned char* pixel = rgb.ptr(py) + 3 * px;
            ++histogram[static_cast<size_t>(std::abs(pixel[1] - pixel[7]))];
            ++count;
        }
    }
    int below = 0;
    size_t median = 0;
    while (median < 255 && (below += histogram[median]) < count / 2)
        ++median;
    const double inMedian =
        histogram[median] > 0 ? (count / 2.0 - (below - histogram[median])) / histogram[median] : 0.5;
    noise_ = std::clamp((static_cast<double>(median) - 0.5 + inMedian) * 1.05, 0.5, 20.0); // 1.4826 / sqrt(2)
}

} // namespace mirvak

#include "PaperModel.h"

#include "Reduction.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int reducedSide = 400;       // about 0.7 mm of an A4 page a pixel
constexpr int closing = 9;             // pixels: broader than the strokes of a headline
constexpr float steepest = 0.035F;     // relative change a pixel that a soft shadow may have
constexpr float tintTolerance = 0.06F; // of the share of a colour in the sum, against the paper at large
constexpr float darkestShare = 0.22F;  // of the bright paper's level: what is darker is not paper
constexpr double leastPaper = 0.02;    // of the picture

struct Tinted
{
    float level, red, blue; ///< mean of the channels, shares of red and blue in their sum
};

Tinted tintOf(const cv::Vec3f& c)
{
    const float sum = std::max(1.0F, c[0] + c[1] + c[2]);
    return {sum / 3, c[0] / sum, c[2] / sum};
}

bool sameTint(const Tinted& a, const Tinted& b, float tolerance)
{
    return std::abs(a.red - b.red) < tolerance && std::abs(a.blue - b.blue) < tolerance;
}

// The colours without what is thin and dark.
cv::Mat closed(const std::array<cv::Mat, 3>& planes)
{
    const cv::Mat kernel = cv::getStructuringElement(cv::MORPH_RECT, {closing, closing});
    std::array<cv::Mat, 3> bright;
    for (size_t c = 0; c < 3; ++c) {
        cv::GaussianBlur(planes[c], bright[c], {3, 3}, 0);
        cv::morphologyEx(bright[c], bright[c], cv::MORPH_CLOSE, kernel);
        cv::GaussianBlur(bright[c], bright[c], {3, 3}, 0);
    }
    cv::Mat merged;
    cv::merge(bright.data(), 3, merged);
    merged.convertTo(merged, CV_32FC3);
    return merged;
}

// Median tint and level of the brighter pixels: most of them are paper.
Tinted brightPaper(const cv::Mat& colours)
{
    std::vector<float> levels, reds, blues;
    for (int y = 0; y < colours.rows; y += 2) {
        for (int x = 0; x < colours.cols; x += 2)
            levels.push_back(tintOf(colours.at<cv::Vec3f>(y, x)).level);
    }
    const auto quantile = [](std::vector<float>& values, double share) {
        const auto at =
            values.begin() + static_cast<ptrdiff_t>(share * static_cast<double>(values.size() - 1));
        std::nth_element(values.begin(), at, values.end());
        return *at;
    };
    const float level = quantile(levels, 0.9);
    for (int y = 0; y < colours.rows; y += 2) {
        for (int x = 0; x < colours.cols; x += 2) {
            const Tinted tint = tintOf(colours.at<cv::Vec3f>(y, x));
            if (tint.level > 0.9F * level) {
                reds.push_back(tint.red);
                blues.push_back(tint.blue);
            }
        }
    }
    return {level, quantile(reds, 0.5), quantile(blues, 0.5)};
}

// Spreads from the bright paper over every change that is as soft as a shadow's. The hard edge of a picture
// or a coloured box stops it.
class PaperFlood
{
public:
    PaperFlood(const cv::Mat& colours, const Tinted& paper)
        : colours_(colours), paper_(paper), mask_(colours.size(), CV_8UC1, cv::Scalar(0))
    {
    }

    cv::Mat run()
    {
        for (int y = 0; y < colours_.rows; ++y) {
            for (int x = 0; x < colours_.cols; ++x) {
                if (tintOf(colours_.at<cv::Vec3f>(y, x)).level > 0.88F * paper_.level)
                    enter(x, y);
            }
        }
        while (!front_.empty()) {
            const cv::Point at = front_.back();
            front_.pop_back();
            const float level = tintOf(colours_.at<cv::Vec3f>(at)).level;
            for (const cv::Point step :
                 {cv::Point(1, 0), cv::Point(-1, 0), cv::Point(0, 1), cv::Point(0, -1)})
                spread(at + step, level);
        }
        return mask_;
    }

private:
    void enter(int x, int y)
    {
        const Tinted tint = tintOf(colours_.at<cv::Vec3f>(y, x));
        if (mask_.at<unsigned char>(y, x) || !sameTint(tint, paper_, tintTolerance) ||
            tint.level < darkestShare * paper_.level)
            return;
        mask_.at<unsigned char>(y, x) = 255;
        front_.emplace_back(x, y);
    }

    void spread(const cv::Point& to, float level)
    {
        if (to.x < 0 || to.y < 0 || to.x >= colours_.cols || to.y >= colours_.rows)
            return;
        const float there = tintOf(colours_.at<cv::Vec3f>(to)).level;
        if (std::abs(there - level) <= std::max(1.5F, steepest * level))
            enter(to.x, to.y);
    }

    const cv::Mat& colours_;
    Tinted paper_;
    cv::Mat mask_;
    std::vector<cv::Point> front_;
};

// Fills where the weight is 0 from ever coarser means of the known places (pull and push: Gortler and others,
// The lumigraph, 1996).
cv::Mat bridged(const cv::Mat& values, const cv::Mat& weights)
{
    cv::Mat known, weighted;
    cv::merge(std::array<cv::Mat, 3>{weights, weights, weights}, known);
    cv::multiply(values, known, weighted);
    if (std::min(values.cols, values.rows) <= 2) {
        const cv::Scalar mean = cv::sum(weighted) / std::max(1e-6, cv::sum(weights)[0]);
        return cv::Mat(values.size(), CV_32FC3, mean);
    }
    cv::Mat coarseSum, coarseWeight;
    cv::pyrDown(weighted, coarseSum);
    cv::pyrDown(weights, coarseWeight);
    cv::Mat safe, coarse;
    cv::max(coarseWeight, 1e-6, safe);
    cv::merge(std::array<cv::Mat, 3>{safe, safe, safe}, known);
    cv::divide(coarseSum, known, coarse);
    cv::min(coarseWeight * 4, 1.0, coarseWeight); // a quarter of a coarse pixel is enough to know it
    cv::Mat filled;
    cv::resize(bridged(coarse, coarseWeight), filled, values.size(), 0, 0, cv::INTER_LINEAR);
    cv::Mat result(values.size(), CV_32FC3);
    for (int y = 0; y < values.rows; ++y) {
        for (int x = 0; x < values.cols; ++x) {
            const float w = weights.at<float>(y, x);
            result.at<cv::Vec3f>(y, x) =
                values.at<cv::Vec3f>(y, x) * w + filled.at<cv::Vec3f>(y, x) * (1 - w);
        }
    }
    return result;
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
    const Tinted bright = brightPaper(colours);
    mask_ = PaperFlood(colours, bright).run();
    if (cv::countNonZero(mask_) < leastPaper * static_cast<double>(mask_.total())) {
        paper_ = cv::Mat(colours.size(), CV_32FC3, cv::Scalar::all(bright.level));
        return;
    }
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

#include "Spine.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr int smallSide = 400;
constexpr int closing = 7;                                          // closes letters
constexpr std::array<double, 4> breadths{0.008, 0.02, 0.045, 0.08}; // of the longer side: half a valley
constexpr double deepest = 0.3; // what is darker counts as this: a stroke is no better than a valley
constexpr double leastDepth = 0.035;
constexpr float leastDeep = 0.015F; // a valley at one place
constexpr double leastShare = 0.7;  // of the places along a spine: a drawing is no valley all along
constexpr int mostDegrees = 15;
constexpr double outermost = 0.36; // of the width, from the middle

// By how much each place is darker than both of its sides.
cv::Mat valleys(const cv::Mat& light, int breadth)
{
    cv::Mat depth(light.size(), CV_32F, cv::Scalar(0));
    for (int y = 0; y < light.rows; ++y) {
        const float* row = light.ptr<float>(y);
        for (int x = breadth; x < light.cols - breadth; ++x) {
            const float least = std::min(row[x - breadth], row[x + breadth]);
            const float most = std::max(row[x - breadth], row[x + breadth]);
            const double deep = (least - row[x]) / std::max(24.0F, most);
            depth.at<float>(y, x) = static_cast<float>(std::clamp(deep, -0.1, deepest));
        }
    }
    return depth;
}

struct Best
{
    double score = 0, x = 0, degrees = 0;
};

void scan(const cv::Mat& depth, double degrees, Best& best)
{
    const double lean = -std::tan(degrees * CV_PI / 180);
    const int first = depth.rows * 15 / 100, last = depth.rows - first;
    std::vector<float> sums(static_cast<size_t>(depth.cols), 0);
    std::vector<int> counts(static_cast<size_t>(depth.cols), 0);
    std::vector<int> deep(static_cast<size_t>(depth.cols), 0);
    for (int y = first; y < last; ++y) {
        const int shift = cvRound(lean * (y - 0.5 * depth.rows));
        const float* row = depth.ptr<float>(y);
        for (int x = std::max(0, -shift); x < std::min(depth.cols, depth.cols - shift); ++x) {
            sums[static_cast<size_t>(x)] += row[x + shift];
            deep[static_cast<size_t>(x)] += row[x + shift] > leastDeep;
            ++counts[static_cast<size_t>(x)];
        }
    }
    for (int x = 0; x < depth.cols; ++x) {
        const double off = std::abs((x + 0.5) / depth.cols - 0.5);
        if (off > outermost || counts[static_cast<size_t>(x)] < (last - first) / 2 ||
            deep[static_cast<size_t>(x)] < leastShare * (last - first))
            continue;
        const double score = sums[static_cast<size_t>(x)] / (last - first) * (1 - off);
        if (score > best.score)
            best = {score, x + 0.0, degrees};
    }
}

} // namespace

std::optional<Spine> findSpine(const BookLook& look)
{
    const double scale = std::min(1.0, smallSide / look.side());
    cv::Mat light;
    cv::resize(look.green(), light, {}, scale, scale, cv::INTER_AREA);
    if (std::min(light.cols, light.rows) < 32)
        return {};
    cv::morphologyEx(light, light, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_RECT, {3, closing}));
    light.convertTo(light, CV_32F);
    cv::GaussianBlur(light, light, {0, 0}, 1.0);
    Best best;
    for (const double breadth : breadths) {
        const cv::Mat depth = valleys(light, std::max(2, cvRound(breadth * scale * look.side())));
        Best here;
        for (int degrees = -mostDegrees; degrees <= mostDegrees; ++degrees)
            scan(depth, degrees, here);
        const double rough = here.degrees;
        for (int quarter = -3; quarter <= 3; ++quarter)
            scan(depth, rough + 0.25 * quarter, here);
        if (here.score > best.score)
            best = here;
    }
    if (best.score < leastDepth)
        return {};
    Spine spine;
    spine.middle = look.toFrame({(best.x + 0.5) / scale - 0.5, 0.5 * look.green().rows - 0.5});
    spine.turn = best.degrees * CV_PI / 180;
    spine.depth = best.score;
    return spine;
}

} // namespace mirvak

#include "View.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double sharpening = 1.5; // how much of what a blur takes away is added
constexpr double blurSigma = 2.0;  // pixels of the view
constexpr int rowsOfAverage = 6;   // the height of the view by the number of rows that are averaged
constexpr int rowsAtMost = 31;

// Pixel centres are whole numbers in every picture, so that the first of a level lies between those of the
// frame.
double centreInFrame(int halvings)
{
    return ((1 << halvings) - 1) / 2.0;
}

double scaleOf(const cv::Matx23d& transform)
{
    return std::sqrt(std::abs(transform(0, 0) * transform(1, 1) - transform(0, 1) * transform(1, 0)));
}

// Immerkaer (1996): what is left of a picture when all that is flat or a straight edge is taken away. The
// median, over samples, leaves out what is neither.
double noiseOf(const cv::Mat& grey)
{
    constexpr int every = 7;
    constexpr double sizeOfMask = 6, medianOfNormal = 0.6745;
    std::vector<int> left;
    for (int y = 1; y + 1 < grey.rows; y += every) {
        const unsigned char *above = grey.ptr(y - 1), *row = grey.ptr(y), *below = grey.ptr(y + 1);
        for (int x = 1; x + 1 < grey.cols; x += every) {
            const int corners = above[x - 1] + above[x + 1] + below[x - 1] + below[x + 1];
            const int sides = above[x] + row[x - 1] + row[x + 1] + below[x];
            left.push_back(std::abs(corners - 2 * sides + 4 * row[x]));
        }
    }
    if (left.empty())
        return 0;
    const auto middle = left.begin() + static_cast<std::ptrdiff_t>(left.size() / 2);
    std::nth_element(left.begin(), middle, left.end());
    return *middle / medianOfNormal / sizeOfMask;
}

void sharpen(cv::Mat& canvas)
{
    cv::Mat smooth;
    cv::GaussianBlur(canvas, smooth, cv::Size(), blurSigma);
    cv::addWeighted(canvas, 1 + sharpening, smooth, -sharpening, 0, canvas);
}

} // namespace

GreyFrame::GreyFrame(const cv::Mat& rgb)
{
    cv::cvtColor(rgb, levels_[0], cv::COLOR_RGB2GRAY);
    for (size_t i = 1; i < levels_.size(); ++i) {
        const cv::Mat& last = levels_[i - 1];
        const cv::Size half(std::max(1, last.cols / 2), std::max(1, last.rows / 2));
        cv::resize(
            last(cv::Rect(0, 0, std::min(last.cols, half.width * 2), std::min(last.rows, half.height * 2))),
            levels_[i],
            half,
            0,
            0,
            cv::INTER_AREA);
    }
    noise_ = noiseOf(levels_[0]);
}

View View::ofLevel(const GreyFrame& frame, int halvings)
{
    const double scale = 1 << halvings, centre = centreInFrame(halvings);
    View view;
    view.size = frame.level(halvings).size();
    view.toFrame = {scale, 0, centre, 0, scale, centre};
    return view;
}

View View::ofBox(const cv::RotatedRect& box, double scale)
{
    View view;
    view.size = {std::max(1, cvRound(box.size.width * scale)), std::max(1, cvRound(box.size.height * scale))};
    const double angle = box.angle * CV_PI / 180, c = std::cos(angle) / scale, s = std::sin(angle) / scale;
    const double x = (view.size.width - 1) / 2.0, y = (view.size.height - 1) / 2.0;
    view.toFrame = {c, -s, box.center.x - c * x + s * y, s, c, box.center.y - s * x - c * y};
    return view;
}

cv::Point2d View::inFrame(const cv::Point2d& point) const
{
    return {toFrame(0, 0) * point.x + toFrame(0, 1) * point.y + toFrame(0, 2),
            toFrame(1, 0) * point.x + toFrame(1, 1) * point.y + toFrame(1, 2)};
}

void draw(const GreyFrame& frame, const View& view, cv::Mat& canvas)
{
    const double scale = scaleOf(view.toFrame);
    const int halvings =
        std::clamp(static_cast<int>(std::floor(std::log2(scale) + 0.01)), 0, GreyFrame::levelCount - 1);
    const double step = 1 << halvings, centre = centreInFrame(halvings);
    cv::Matx23d toLevel = view.toFrame * (1 / step);
    toLevel(0, 2) -= centre / step;
    toLevel(1, 2) -= centre / step;
    const cv::Mat& level = frame.level(halvings);
    if (view.size == level.size() && cv::norm(toLevel - cv::Matx23d(1, 0, 0, 0, 1, 0)) < 1e-6)
        level.copyTo(canvas);
    else
        cv::warpAffine(level,
                       canvas,
                       toLevel,
                       view.size,
                       (scale < 0.8 ? cv::INTER_CUBIC : cv::INTER_LINEAR) | cv::WARP_INVERSE_MAP,
                       cv::BORDER_REPLICATE);
    if (view.smoothing > 0)
        cv::GaussianBlur(canvas, canvas, cv::Size(), view.smoothing / scale);
    if (view.smoothedUp)
        cv::blur(canvas, canvas, cv::Size(1, std::clamp(canvas.rows / rowsOfAverage, 1, rowsAtMost)));
    if (view.sharpened)
        sharpen(canvas);
    if (view.inverted)
        cv::bitwise_not(canvas, canvas);
}

} // namespace mirvak

#include "TextSkew.h"

#include "Reduction.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int reducedSide = 1200; // a line of small print still has letters of five pixels
constexpr double widest = 20, coarseStep = 0.25, fineStep = 0.02;
constexpr size_t leastPoints = 150, mostPoints = 40'000;
constexpr double leastSharpness = 1.35; // of the best angle over the usual one

struct Feet
{
    std::vector<cv::Point2f> points;
    double extent = 0; ///< of the picture across the lines, pixels
};

// Dark strokes against their surroundings; even light is not needed.
cv::Mat strokes(const cv::Mat& rgb, Reduction& reduction)
{
    reduction.build(rgb, reducedSide);
    const auto& planes = reduction.planes();
    cv::Mat grey, mean, dark;
    cv::addWeighted(planes[0], 0.5, planes[1], 0.5, 0, grey);
    cv::boxFilter(grey, mean, CV_8U, {31, 31});
    mean.convertTo(mean, CV_8U, 0.85, -4);
    cv::compare(grey, mean, dark, cv::CMP_LT);
    return dark;
}

// Pixels where a stroke ends downwards. Long unbroken edges (rulings, pictures, the desk) are left alone:
// they count as the few points at which a line of text of their length would have more.
Feet feetOf(const cv::Mat& dark)
{
    Feet feet;
    feet.extent = dark.rows;
    for (int y = 1; y + 1 < dark.rows; ++y) {
        const unsigned char* here = dark.ptr(y);
        const unsigned char* below = dark.ptr(y + 1);
        for (int x = 0; x < dark.cols; ++x) {
            if (here[x] && !below[x])
                feet.points.emplace_back(static_cast<float>(x), static_cast<float>(y));
        }
    }
    if (feet.points.size() > mostPoints) {
        const double step = static_cast<double>(feet.points.size()) / mostPoints;
        for (size_t i = 0; i < mostPoints; ++i)
            feet.points[i] = feet.points[static_cast<size_t>(static_cast<double>(i) * step)];
        feet.points.resize(mostPoints);
    }
    return feet;
}

class Profile
{
public:
    explicit Profile(const Feet& feet) : feet_(feet) {}

    // Sum of squared counts: greatest when the feet gather in few rows.
    double sharpness(double degrees)
    {
        const auto slope = static_cast<float>(std::tan(degrees * CV_PI / 180));
        const auto bins = static_cast<size_t>(3 * feet_.extent) + 8;
        counts_.assign(bins, 0);
        const auto middle = static_cast<float>(bins) / 2 - static_cast<float>(feet_.extent) / 2;
        for (const cv::Point2f& p : feet_.points) {
            const float row = p.y - slope * (p.x - 0.5F * static_cast<float>(feet_.extent)) + middle;
            const auto bin = static_cast<int>(row);
            const float part = row - static_cast<float>(bin);
            if (bin < 0 || static_cast<size_t>(bin) + 1 >= bins)
                continue;
            counts_[static_cast<size_t>(bin)] += 1 - part;
            counts_[static_cast<size_t>(bin) + 1] += part;
        }
        double sum = 0;
        for (const float count : counts_)
            sum += static_cast<double>(count) * count;
        return sum;
    }

private:
    const Feet& feet_;
    std::vector<float> counts_;
};

struct Peak
{
    double degrees = 0, sharpness = 0; ///< against the usual sharpness of the same points
};

Peak sharpest(const Feet& feet)
{
    if (feet.points.size() < leastPoints)
        return {};
    Profile profile(feet);
    std::vector<double> all;
    Peak best;
    const int coarseSteps = cvRound(widest / coarseStep);
    for (int step = -coarseSteps; step <= coarseSteps; ++step) {
        const double a = step * coarseStep;
        all.push_back(profile.sharpness(a));
        if (all.back() > best.sharpness)
            best = {a, all.back()};
    }
    const double centre = best.degrees;
    const int fineSteps = cvRound(coarseStep / fineStep);
    for (int step = -fineSteps; step <= fineSteps; ++step) {
        const double a = centre + step * fineStep;
        const double sharp = profile.sharpness(a);
        if (sharp > best.sharpness)
            best = {a, sharp};
    }
    std::nth_element(all.begin(), all.begin() + static_cast<ptrdiff_t>(all.size() / 2), all.end());
    best.sharpness /= std::max(1.0, all[all.size() / 2]);
    return best;
}

} // namespace

std::optional<double> findTextSkew(const cv::Mat& rgb)
{
    Reduction reduction;
    const cv::Mat dark = strokes(rgb, reduction);
    const Peak across = sharpest(feetOf(dark));
    cv::Mat turned;
    cv::rotate(dark, turned, cv::ROTATE_90_CLOCKWISE);
    const Peak upwards = sharpest(feetOf(turned));
    const Peak& best = across.sharpness >= upwards.sharpness ? across : upwards;
    if (best.sharpness < leastSharpness || std::abs(best.degrees) > widest - coarseStep)
        return std::nullopt;
    return best.degrees;
}

} // namespace mirvak

#include "Reflection.h"

#include "Sharpness.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace mirvak {

namespace {

constexpr int saturated = 248;       // of the darkest channel: white, and the sensor counts no further
constexpr double leastArea = 0.0008; // of the page
constexpr double mostArea = 0.4;     // of the page: more than that is paper, lit too strongly
constexpr double bright = 0.75;      // of the page's cells lie below: paper between print
constexpr float brightPaper = 241;   // levels
constexpr int rays = 16;
constexpr int leastRays = 5;
constexpr int leastDrop = 12;         // levels from the spot to the page beside it
constexpr int rayStep = 2;            // pixels
constexpr double printWidth = 0.008;  // of the longest side: the light between strokes bridges them
constexpr double longestFlank = 0.12; // of the longest side: light that falls farther is uneven light
constexpr int endParts = 5;           // of the way that is looked at: the flank is over before the last two
constexpr double endedShare = 0.1;    // of the drop may be between those
constexpr double endedLevels = 0.5;   // noise
constexpr double softFlank = 3;       // times what counts as blurred

int darkestAt(const cv::Mat& rgb, int x, int y)
{
    const auto* p = rgb.ptr(y) + ptrdiff_t{3} * x;
    return std::min({p[0], p[1], p[2]});
}

/// Each value becomes the largest of the `reach` values from there on.
void spreadBackward(std::vector<int>& values, int reach)
{
    for (size_t i = 0; i < values.size(); ++i) {
        const size_t end = std::min(values.size(), i + static_cast<size_t>(std::max(1, reach)));
        values[i] = *std::max_element(values.begin() + static_cast<ptrdiff_t>(i),
                                      values.begin() + static_cast<ptrdiff_t>(end));
    }
}

double meanOf(const std::vector<int>& values, int from, int count)
{
    const auto begin = values.begin() + std::max(0, from);
    return std::accumulate(begin, begin + count, 0.0) / count;
}

} // namespace

bool Reflection::isOn(const ShotLook& look)
{
    cv::threshold(look.darkestChannel(), spots_, saturated - 1, 255, cv::THRESH_BINARY);
    spots_ &= look.inPage();
    const int page = cv::countNonZero(look.inPage());
    if (page == 0 || cv::countNonZero(spots_) > mostArea * page)
        return false;
    std::vector<float> levels;
    for (int y = 0; y < spots_.rows; ++y) {
        for (int x = 0; x < spots_.cols; ++x) {
            if (look.inPage().ptr(y)[x] != 0)
                levels.push_back(look.darkestChannel().ptr(y)[x]);
        }
    }
    if (quantile(levels, bright) > brightPaper)
        return false; // the paper itself is about to saturate
    const int count = cv::connectedComponentsWithStats(spots_, labels_, statistics_, centroids_, 8, CV_32S);
    for (int spot = 1; spot < count; ++spot) {
        const cv::Point cell(cvRound(centroids_.at<double>(spot, 0)),
                             cvRound(centroids_.at<double>(spot, 1)));
        if (statistics_.at<int>(spot, cv::CC_STAT_AREA) >= std::max(1.0, leastArea * page) &&
            labels_.at<int>(cell) == spot && endsSoftly(look, look.toPicture(cell)))
            return true;
    }
    return false;
}

bool Reflection::endsSoftly(const ShotLook& look, const cv::Point2d& middle)
{
    int valid = 0, soft = 0;
    for (int i = 0; i < rays; ++i) {
        const double angle = 2 * CV_PI * i / rays;
        bool counts = false;
        soft += isSoftRay(look, middle, {std::cos(angle), std::sin(angle)}, counts) ? 1 : 0;
        valid += counts ? 1 : 0;
    }
    return valid >= leastRays && 2 * soft > valid;
}

/// `valid`: the light falls on this ray, and before the page ends.
bool Reflection::isSoftRay(const ShotLook& look,
                           const cv::Point2d& middle,
                           const cv::Point2d& direction,
                           bool& valid)
{
    const cv::Mat& rgb = look.picture();
    const int longest = look.longestSide();
    const auto outside = [&](const cv::Point2d& place) {
        const cv::Point cell(cvRound((place.x + 0.5) / look.cellSize() - 0.5),
                             cvRound((place.y + 0.5) / look.cellSize() - 0.5));
        const cv::Rect all({0, 0}, look.inPage().size());
        return !all.contains(cell) || look.inPage().at<unsigned char>(cell) == 0;
    };
    envelope_.clear();
    int saturatedSteps = 0;
    const int mostSteps = longest / rayStep, flankSteps = cvRound(longestFlank * longest / rayStep);
    for (int step = 0; step < mostSteps && static_cast<int>(envelope_.size()) - saturatedSteps < flankSteps;
         ++step) {
        const cv::Point2d place = middle + direction * (step * rayStep);
        const cv::Point pixel(cvRound(place.x), cvRound(place.y));
        if (pixel.x < 0 || pixel.y < 0 || pixel.x >= rgb.cols || pixel.y >= rgb.rows || outside(place))
            break;
        envelope_.push_back(darkestAt(rgb, pixel.x, pixel.y));
        if (envelope_.back() >= saturated)
            saturatedSteps = static_cast<int>(envelope_.size());
    }
    spreadBackward(envelope_, cvRound(printWidth * longest / rayStep));
    valid = false;
    if (static_cast<int>(envelope_.size()) - saturatedSteps < std::max(2, flankSteps / 4))
        return false; // the page ends too soon to tell
    const auto begin = envelope_.begin();
    const auto base = std::min_element(begin, envelope_.end());
    const int drop = 255 - *base;
    if (drop < leastDrop)
        return false;
    valid = true;
    // A lamp's light ends; uneven light goes on falling.
    const auto length = static_cast<int>(envelope_.size()) - saturatedSteps;
    const int part = std::max(1, length / endParts), last = static_cast<int>(envelope_.size());
    const double beforeEnd = meanOf(envelope_, last - 2 * part, part);
    if (beforeEnd - meanOf(envelope_, last - part, part) > endedLevels + endedShare * drop)
        return false;
    const auto lastAbove = [&](double share) {
        const double level = *base + share * drop;
        return std::find_if(begin, envelope_.end(), [level](int value) { return value < level; }) - begin;
    };
    constexpr double high = 0.9, low = 0.1;
    const auto width = static_cast<double>((lastAbove(low) - lastAbove(high)) * rayStep);
    return width >= softFlank * blurLimit(longest);
}

} // namespace mirvak

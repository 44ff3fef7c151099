#include "PageCheck.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int reducedSide = 320;     // lines of text on an A4 page stay apart
constexpr int surroundings = 25;     // pixels
constexpr int restingChecks = 3;     // in a row without movement: half a second at six checks a second
constexpr double moving = 0.12;      // difference between two checks
constexpr double noiseEnergy = 6e-4; // of contrast that noise leaves, squared; the measure of "nothing there"
constexpr float clearContrast = 0.12F;
constexpr double leastContent = 0.008; // of the picture, in clear contrast: the edge of a blank page
constexpr int alignReach = 3;          // pixels: the same page nudged by 4 mm is no new page

} // namespace

void PageCheck::reset()
{
    page_.release();
    before_.release();
    stillChecks_ = 0;
}

PageCheck::Result PageCheck::check(const cv::Mat& rgb, double threshold)
{
    look(rgb);
    const bool comparable = before_.size() == now_.size();
    const bool still = comparable && differenceTo(before_, 0) < moving;
    stillChecks_ = still ? stillChecks_ + 1 : 0;
    now_.copyTo(before_);

    Result result;
    const bool known = page_.size() == now_.size();
    result.difference = known ? differenceTo(page_, 0) : 1;
    if (known && result.difference >= threshold && stillChecks_ >= restingChecks)
        result.difference = differenceTo(page_, alignReach);
    result.newPage = stillChecks_ >= restingChecks && result.difference >= threshold && showsSomething();
    if (result.newPage)
        now_.copyTo(page_);
    return result;
}

void PageCheck::look(const cv::Mat& rgb)
{
    reduction_.build(rgb, reducedSide);
    const auto& planes = reduction_.planes();
    grey_.create(reduction_.size(), CV_32FC1);
    for (int y = 0; y < grey_.rows; ++y) {
        float* out = grey_.ptr<float>(y);
        const unsigned char* r = planes[0].ptr(y);
        const unsigned char* g = planes[1].ptr(y);
        const unsigned char* b = planes[2].ptr(y);
        for (int x = 0; x < grey_.cols; ++x)
            out[x] = static_cast<float>(r[x] + 2 * g[x] + b[x]);
    }
    cv::boxFilter(grey_, mean_, CV_32F, {surroundings, surroundings}, {-1, -1}, true, cv::BORDER_REFLECT);
    cv::boxFilter(grey_, grey_, CV_32F, {3, 3}, {-1, -1}, true, cv::BORDER_REFLECT);
    now_.create(grey_.size(), CV_32FC1);
    for (int y = 0; y < grey_.rows; ++y) {
        const float* g = grey_.ptr<float>(y);
        const float* m = mean_.ptr<float>(y);
        float* out = now_.ptr<float>(y);
        for (int x = 0; x < grey_.cols; ++x)
            out[x] = (g[x] - m[x]) / (m[x] + 40.0F); // 10 levels: darkness is not divided up into contrast
    }
}

bool PageCheck::showsSomething() const
{
    int clear = 0;
    for (int y = 0; y < now_.rows; ++y) {
        const float* row = now_.ptr<float>(y);
        for (int x = 0; x < now_.cols; ++x)
            clear += std::abs(row[x]) > clearContrast ? 1 : 0;
    }
    return clear >= leastContent * static_cast<double>(now_.total());
}

// Energy of the difference over the energy of both: 0 for the same picture, 1 for two that have nothing in
// common. The least over all small shifts within reach.
double PageCheck::differenceTo(const cv::Mat& other, int reach) const
{
    const int w = now_.cols - 2 * reach, h = now_.rows - 2 * reach;
    if (w <= 0 || h <= 0)
        return 1;
    double least = 1;
    for (int dy = -reach; dy <= reach; ++dy) {
        for (int dx = -reach; dx <= reach; ++dx) {
            float apart = 0, energy = 0;
            for (int y = 0; y < h; ++y) {
                const float* a = now_.ptr<float>(y + reach) + reach;
                const float* b = other.ptr<float>(y + reach + dy) + reach + dx;
                float rowApart = 0, rowEnergy = 0;
                for (int x = 0; x < w; ++x) {
                    rowApart += (a[x] - b[x]) * (a[x] - b[x]);
                    rowEnergy += a[x] * a[x] + b[x] * b[x];
                }
                apart += rowApart;
                energy += rowEnergy;
            }
            least = std::min(least, apart / (energy + noiseEnergy * w * h));
        }
    }
    return std::clamp(least, 0.0, 1.0);
}

} // namespace mirvak

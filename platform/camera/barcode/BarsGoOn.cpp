#include "BarsGoOn.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr float widthSeen = 0.5F; // of the place: its sides may show more than the bars
constexpr double widthAtMost = 1000, heightAtMost = 1000; // pixels of the view
constexpr int step = 2;                                   // rows: bars at a slant move by less than a module
constexpr int rowsOfAverage = 3;                          // against noise
// From one row to the next. Between two labels the bars end in white.
constexpr double leastCorrelation = 0.7;
constexpr double leastContrast = 0.4; // of the strongest row

struct Row
{
    cv::Mat tones; ///< around their mean
    double contrast;
};

Row rowOf(const cv::Mat& view, int y)
{
    Row row;
    view.row(y).convertTo(row.tones, CV_32F);
    row.tones -= cv::mean(row.tones);
    row.contrast = cv::norm(row.tones);
    return row;
}

bool resemble(const Row& a, const Row& b)
{
    return a.tones.dot(b.tones) > leastCorrelation * a.contrast * b.contrast;
}

} // namespace

bool barsGoOn(const GreyFrame& frame,
              const Candidate& candidate,
              const cv::Point2f& from,
              const cv::Point2f& to)
{
    const double angle = candidate.box.angle * CV_PI / 180;
    const cv::Point2f across(float(std::cos(angle)), float(std::sin(angle))), along(-across.y, across.x);
    const float aside = std::abs((to - from).dot(across)), down = std::abs((to - from).dot(along));
    if (!candidate.isBars || aside > down || down < step || candidate.box.size.width < step / widthSeen)
        return false;
    const cv::Point2f middle = (from + to) / 2;
    const cv::Point2f centre = middle + across * (candidate.box.center - middle).dot(across);
    const cv::Size2f size(widthSeen * candidate.box.size.width, down);
    const View view =
        View::ofBox({centre, size, candidate.box.angle},
                    std::min({1.0, widthAtMost / double(size.width), heightAtMost / double(size.height)}));
    cv::Mat picture;
    draw(frame, view, picture);
    cv::blur(picture, picture, {1, rowsOfAverage});
    double strongest = 0;
    for (int y = 0; y < picture.rows; y += step)
        strongest = std::max(strongest, rowOf(picture, y).contrast);
    Row last = rowOf(picture, 0);
    for (int y = 0; y < picture.rows; y += step) {
        const Row row = rowOf(picture, y);
        if (row.contrast < leastContrast * strongest || !resemble(last, row))
            return false;
        last = row;
    }
    return true;
}

} // namespace mirvak

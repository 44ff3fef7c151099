#include "Pictures.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {

constexpr double cellsPerHeight = 6;
constexpr int white = 251;
// In heights of a mark.
constexpr double whiteWithin = 0.8; // there is paper so near in all print
constexpr double solid = 1.6;       // thinner are strokes of large letters, and lines
constexpr double apart = 3;         // parts of one picture
constexpr double leastSide = 5;
constexpr double shadeWithin =
    2; // what is shaded for the most part so far around is a picture, pale as it is
// Shades pass slowly into each other, letters end at once.
constexpr int darkestShade = 120, steepestShade = 30; // levels; the latter from cell to cell
constexpr double shadeShare = 0.5;

cv::Mat block(double heights)
{
    const int side = std::max(1, cvRound(heights * cellsPerHeight));
    return cv::getStructuringElement(cv::MORPH_RECT, {side, side});
}

// Pale skies and walls have white spots, too: there tones count that are neither paper nor ink.
cv::Mat shadedPlaces(const cv::Mat& tones)
{
    cv::Mat darkest, lightest, share;
    cv::erode(tones, darkest, cv::Mat::ones(3, 3, CV_8UC1));
    cv::dilate(tones, lightest, cv::Mat::ones(3, 3, CV_8UC1));
    const cv::Mat shaded = (tones < white) & (tones > darkestShade) & (lightest - darkest < steepestShade);
    const int side = cvRound(shadeWithin * cellsPerHeight);
    cv::blur(shaded, share, {side, side});
    return share >= shadeShare * 255;
}

} // namespace

std::vector<cv::Rect> picturesOf(const cv::Mat& grey, int markHeight)
{
    const double cell = std::max(1.0, markHeight / cellsPerHeight);
    cv::Mat tones, toned;
    cv::resize(grey,
               tones,
               {std::max(1, cvRound(grey.cols / cell)), std::max(1, cvRound(grey.rows / cell))},
               0,
               0,
               cv::INTER_AREA);
    cv::dilate(tones, toned, block(whiteWithin));
    toned = toned < white;
    cv::morphologyEx(toned, toned, cv::MORPH_OPEN, block(solid));
    toned |= shadedPlaces(tones);
    cv::morphologyEx(toned, toned, cv::MORPH_CLOSE, block(apart));
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(toned, labels, stats, centres, 8, CV_32S);
    std::vector<cv::Rect> pictures;
    for (int i = 1; i < count; ++i) {
        const cv::Rect place(cvRound(stats.at<int>(i, cv::CC_STAT_LEFT) * cell),
                             cvRound(stats.at<int>(i, cv::CC_STAT_TOP) * cell),
                             cvRound(stats.at<int>(i, cv::CC_STAT_WIDTH) * cell),
                             cvRound(stats.at<int>(i, cv::CC_STAT_HEIGHT) * cell));
        if (std::min(place.width, place.height) < leastSide * markHeight)
            continue;
        const int rim = cvRound(whiteWithin / 2 * markHeight); // so far the white around was spread into it
        pictures.emplace_back(place.x - rim, place.y - rim, place.width + 2 * rim, place.height + 2 * rim);
    }
    return pictures;
}

} // namespace mirvak

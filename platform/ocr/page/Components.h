#pragma once

#include <opencv2/imgproc.hpp>

namespace mirvak {

constexpr int paper = 255;     ///< level of the empty page
constexpr int ruleLength = 12; ///< heights of a mark: shorter lines part nothing

/// The connected parts of a mask (CV_8UC1); the first is what is not set.
struct Components
{
    cv::Mat labels; // CV_32S
    cv::Mat stats;
    int count = 0;

    explicit Components(const cv::Mat& black)
    {
        cv::Mat centres;
        count = cv::connectedComponentsWithStats(black, labels, stats, centres, 8, CV_32S);
    }
    cv::Rect box(int i) const
    {
        return {stats.at<int>(i, cv::CC_STAT_LEFT),
                stats.at<int>(i, cv::CC_STAT_TOP),
                stats.at<int>(i, cv::CC_STAT_WIDTH),
                stats.at<int>(i, cv::CC_STAT_HEIGHT)};
    }
    int area(int i) const { return stats.at<int>(i, cv::CC_STAT_AREA); }
    cv::Mat mask(int i) const { return labels(box(i)) == i; }
};

} // namespace mirvak

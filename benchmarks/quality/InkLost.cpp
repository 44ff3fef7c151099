#include "InkLost.h"

#include <opencv2/imgproc.hpp>

double inkLost(const cv::Mat& photo, const cv::Mat& ink, const cv::Mat& page, const cv::Matx33d& toOld)
{
    constexpr int reach = 4;   // pixels: rivals' ways are known to a hundredth of a degree only
    constexpr int asDark = 45; // levels: resampled strokes are paler
    cv::Mat before, after;
    cv::cvtColor(photo, before, cv::COLOR_RGB2GRAY);
    cv::cvtColor(page, after, cv::COLOR_RGB2GRAY);
    cv::erode(after, after, cv::getStructuringElement(cv::MORPH_RECT, {2 * reach + 1, 2 * reach + 1}));
    const cv::Matx33d toNew = toOld.inv();
    const cv::Rect frame({0, 0}, page.size());
    int all = 0, lost = 0;
    for (int y = 0; y < ink.rows; ++y) {
        for (int x = 0; x < ink.cols; ++x) {
            if (!ink.at<uchar>(y, x))
                continue;
            const cv::Vec3d at = toNew * cv::Vec3d(x, y, 1);
            const cv::Point place(cvRound(at[0] / at[2]), cvRound(at[1] / at[2]));
            ++all;
            if (!frame.contains(place) || after.at<uchar>(place) > before.at<uchar>(y, x) + asDark)
                ++lost;
        }
    }
    return double(lost) / std::max(1, all);
}

cv::Matx33d turnedAboutMiddle(const cv::Size& before, const cv::Size& after, double degrees)
{
    const cv::Point2f middle(0.5F * float(before.width - 1), 0.5F * float(before.height - 1));
    cv::Mat turn = cv::getRotationMatrix2D(middle, degrees, 1);
    turn.at<double>(0, 2) += 0.5 * (after.width - before.width);
    turn.at<double>(1, 2) += 0.5 * (after.height - before.height);
    cv::Matx33d toNew = cv::Matx33d::eye();
    turn.copyTo(cv::Mat(toNew, false).rowRange(0, 2));
    return toNew.inv();
}

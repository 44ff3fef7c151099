#include "ReadingOrder.h"

#include <algorithm>
#include <utility>

namespace mirvak {

namespace {

constexpr double besideShare = 0.5; // of the height of the lower sheet

std::pair<double, double> extentOf(const Outline& sheet, double cv::Point2d::*axis)
{
    const auto [least, most] =
        std::minmax_element(sheet.corners.begin(), sheet.corners.end(), [&](const auto& a, const auto& b) {
            return a.*axis < b.*axis;
        });
    return {(*least).*axis, (*most).*axis};
}

bool liesBeside(const Outline& sheet, const Outline& other)
{
    const auto [top, bottom] = extentOf(sheet, &cv::Point2d::y);
    const auto [otherTop, otherBottom] = extentOf(other, &cv::Point2d::y);
    const double shared = std::min(bottom, otherBottom) - std::max(top, otherTop);
    return shared >= besideShare * std::min(bottom - top, otherBottom - otherTop);
}

} // namespace

void sortForReading(std::vector<Outline>& sheets)
{
    const auto before = [](double cv::Point2d::*axis) {
        return [axis](const Outline& a, const Outline& b) {
            return extentOf(a, axis).first < extentOf(b, axis).first;
        };
    };
    for (auto row = sheets.begin(); row != sheets.end();) {
        std::iter_swap(row, std::min_element(row, sheets.end(), before(&cv::Point2d::y)));
        const Outline first = *row;
        const auto end = std::stable_partition(
            row, sheets.end(), [&](const Outline& sheet) { return liesBeside(sheet, first); });
        std::sort(row, end, before(&cv::Point2d::x));
        row = end;
    }
}

} // namespace mirvak

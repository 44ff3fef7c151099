#include "ReadingOrder.h"

#include <algorithm>
#include <tuple>

namespace mirvak {

namespace {

bool isBeside(const cv::Rect2f& a, const cv::Rect2f& b)
{
    const float common = std::min(a.br().y, b.br().y) - std::max(a.y, b.y);
    return common >= 0.25F * std::min(a.height, b.height);
}

} // namespace

void sortForReading(std::vector<Code>& codes)
{
    std::sort(codes.begin(), codes.end(), [](const Code& a, const Code& b) {
        return std::make_tuple(a.box.y, a.box.x, a.text) < std::make_tuple(b.box.y, b.box.x, b.text);
    });
    for (auto row = codes.begin(); row != codes.end();) {
        const cv::Rect2f first = row->box;
        const auto end = std::stable_partition(
            row, codes.end(), [&](const Code& code) { return isBeside(first, code.box); });
        std::stable_sort(row, end, [](const Code& a, const Code& b) { return a.box.x < b.box.x; });
        row = end;
    }
}

} // namespace mirvak

#include "DeskColours.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr double usualShare = 0.0015; // of the rim, for a colour to be the desk's

} // namespace

void DeskColours::learn(const SmallLook::Planes& planes)
{
    counts_.assign(usual_.size(), 0);
    const cv::Size size = planes[0].size();
    const int rim = std::max(2, std::min(size.width, size.height) / 24);
    int all = 0;
    for (int y = 0; y < size.height; y += 2) {
        const bool wholeRow = y < rim || y >= size.height - rim;
        for (int x = 0; x < size.width; x += 2) {
            if (!wholeRow && x == rim + rim % 2)
                x = std::max(x, (size.width - rim) & ~1);
            ++counts_[indexOf({planes[0].ptr(y)[x], planes[1].ptr(y)[x], planes[2].ptr(y)[x]})];
            ++all;
        }
    }
    for (size_t i = 0; i < counts_.size(); ++i)
        usual_[i] = counts_[i] > usualShare * all;
}

} // namespace mirvak

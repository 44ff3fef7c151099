#include "Bearing.h"

#include <algorithm>
#include <limits>

namespace mirvak {

namespace {

constexpr double clear = 1.5;      // times as many letters for one way as for the other
constexpr size_t sampleSize = 700; // letters

int gapBetween(int from, int to, int otherFrom, int otherTo)
{
    return std::max(otherFrom - to, from - otherTo);
}

} // namespace

Bearing bearingOf(const Marks& marks)
{
    std::vector<cv::Rect> letters;
    for (const cv::Rect& box : marks.boxes) {
        if (2 * box.height > marks.height)
            letters.push_back(box);
    }
    const size_t step = std::max<size_t>(1, letters.size() / sampleSize);
    int across = 0, upward = 0;
    for (size_t i = 0; i < letters.size(); i += step) {
        const cv::Rect& a = letters[i];
        int beside = std::numeric_limits<int>::max(), below = beside;
        for (const cv::Rect& b : letters) {
            const int x = gapBetween(a.x, a.br().x, b.x, b.br().x);
            const int y = gapBetween(a.y, a.br().y, b.y, b.br().y);
            if (x >= 0 && y < 0)
                beside = std::min(beside, x);
            else if (y >= 0 && x < 0)
                below = std::min(below, y);
        }
        across += beside < below;
        upward += below < beside;
    }
    if (across > clear * upward)
        return Bearing::across;
    return upward > clear * across ? Bearing::upward : Bearing::unclear;
}

} // namespace mirvak

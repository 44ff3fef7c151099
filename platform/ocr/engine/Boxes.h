#pragma once

#include "ReadPage.h"

#include <opencv2/core.hpp>

#include <algorithm>

namespace mirvak {

inline cv::Rect rectOf(const Box& box)
{
    return {box.left, box.top, box.width(), box.height()};
}

inline Box boxOf(const cv::Rect& rect)
{
    return {rect.x, rect.y, rect.br().x, rect.br().y};
}

inline Box boxAround(const std::vector<ReadWord>& words)
{
    cv::Rect all;
    for (const ReadWord& word : words)
        all |= rectOf(word.box);
    return boxOf(all);
}

/// How far two stretches overlap; negative for the gap between them.
inline int shared(int from, int to, int otherFrom, int otherTo)
{
    return std::min(to, otherTo) - std::max(from, otherFrom);
}

} // namespace mirvak

#pragma once

#include "ReadPage.h"

namespace mirvak {

/// Mean confidence of words, weighted by their length; 0 without any.
inline double confidenceOf(const std::vector<ReadWord>& words)
{
    double sum = 0, weight = 0;
    for (const ReadWord& word : words) {
        const auto length = static_cast<double>(word.text.size());
        sum += static_cast<double>(word.confidence) * length;
        weight += length;
    }
    return weight > 0 ? sum / weight : 0;
}

} // namespace mirvak

#include "ScriptLook.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr size_t leastMarks = 60; // fewer have no statistics
constexpr double sameHeight = 1.15;
constexpr double latinTall = 0.3;     // share of marks that are higher than most
constexpr double cyrillicTall = 0.08; // less is print in capitals, or numbers
constexpr double cyrillicSame = 0.78; // share of marks of one height

struct Heights
{
    double same = 0; ///< share of the most frequent height
    double tall = 0; ///< share of what is higher than that
};

Heights heightsOf(const std::vector<int>& sorted)
{
    size_t most = 0, from = 0;
    for (size_t begin = 0, end = 0; begin < sorted.size(); ++begin) {
        while (end < sorted.size() && sorted[end] <= sorted[begin] * sameHeight + 0.5)
            ++end;
        if (end - begin > most) {
            most = end - begin;
            from = begin;
        }
    }
    const auto all = static_cast<double>(sorted.size());
    return {static_cast<double>(most) / all, static_cast<double>(sorted.size() - from - most) / all};
}

} // namespace

ScriptLook scriptLookOf(const Marks& marks)
{
    std::vector<int> sorted;
    for (const cv::Rect& box : marks.boxes) {
        if (box.height * 5 >= marks.height * 3 && box.height < 4 * marks.height)
            sorted.push_back(box.height);
    }
    if (sorted.size() < leastMarks)
        return ScriptLook::latin;
    std::sort(sorted.begin(), sorted.end());
    const Heights heights = heightsOf(sorted);
    if (heights.tall >= latinTall)
        return ScriptLook::latin;
    if (heights.same < cyrillicSame)
        return ScriptLook::ideographs;
    return heights.tall >= cyrillicTall ? ScriptLook::cyrillic : ScriptLook::latin;
}

} // namespace mirvak

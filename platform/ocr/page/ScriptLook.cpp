#include "ScriptLook.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr size_t leastMarks = 60; // fewer have no statistics
constexpr double sameHeight = 1.15;
constexpr double latinTall = 0.26;    // share of marks that are higher than most
constexpr double latinSmaller = 0.38; // of one height below that of most, which are capitals and numbers then
constexpr double cyrillicTall = 0.08; // less is print in capitals, or numbers
constexpr double cyrillicSame = 0.78; // share of marks of one height

struct Heights
{
    double same = 0;    ///< share of the most frequent height
    double tall = 0;    ///< share of what is higher than that
    double smaller = 0; ///< share of the most frequent height below that
};

/// Marks of about one height, by their place in order.
struct Window
{
    size_t from = 0, count = 0;
};

Window mostOf(const std::vector<int>& sorted, size_t end)
{
    Window most;
    for (size_t begin = 0, to = 0; begin < end; ++begin) {
        while (to < end && sorted[to] <= sorted[begin] * sameHeight + 0.5)
            ++to;
        if (to - begin > most.count)
            most = {begin, to - begin};
    }
    return most;
}

Heights heightsOf(const std::vector<int>& sorted)
{
    const Window most = mostOf(sorted, sorted.size()), below = mostOf(sorted, most.from);
    const auto share = [&](size_t count) {
        return static_cast<double>(count) / static_cast<double>(sorted.size());
    };
    return {share(most.count), share(sorted.size() - most.from - most.count), share(below.count)};
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
    if (heights.tall >= latinTall || heights.smaller >= latinSmaller)
        return ScriptLook::latin;
    if (heights.tall < cyrillicTall)
        return heights.same < cyrillicSame ? ScriptLook::ideographs : ScriptLook::latin;
    // Numbers are tall, too; parts of ideographs are rather lower than most.
    const bool isSmallRare = heights.tall > 1 - heights.same - heights.tall;
    return heights.same >= cyrillicSame || isSmallRare ? ScriptLook::cyrillic : ScriptLook::ideographs;
}

} // namespace mirvak

#include "Type.h"

#include "Unicode.h"

#include <algorithm>

namespace mirvak {

namespace {

// What the recogniser measures from the lowest to the highest letter, in ems of usual fonts.
constexpr double letterEm = 1.1, ideographEm = 0.85;
constexpr double cellGap = 1.9; // ems; justified lines stretch a space to hardly more than one

} // namespace

bool isIdeographicLine(const ReadLine& line)
{
    size_t ideographs = 0, all = 0;
    for (const ReadWord& word : line.words) {
        const std::u32string text = fromUtf8(word.text);
        ideographs += static_cast<size_t>(std::count_if(text.begin(), text.end(), isIdeographic));
        all += text.size();
    }
    return ideographs * 2 > all;
}

double emOf(const ReadLine& line)
{
    const double height = line.letterHeight > 0 ? static_cast<double>(line.letterHeight) : line.box.height();
    return height * (isIdeographicLine(line) ? ideographEm : letterEm);
}

double bodyEm(const ReadPage& page)
{
    std::vector<std::pair<double, int>> sizes;
    int total = 0;
    for (const ReadBlock& block : page.blocks) {
        for (const ReadLine& line : block) {
            sizes.emplace_back(emOf(line), line.box.width());
            total += line.box.width();
        }
    }
    std::sort(sizes.begin(), sizes.end());
    int below = 0;
    for (const auto& [em, width] : sizes) {
        below += width;
        if (below * 2 >= total)
            return em;
    }
    return 0;
}

std::vector<std::vector<ReadWord>> cellsOf(const ReadLine& line)
{
    const double gap = cellGap * emOf(line);
    std::vector<std::vector<ReadWord>> cells;
    for (const ReadWord& word : line.words) {
        if (cells.empty() || word.box.left - cells.back().back().box.right > gap)
            cells.emplace_back();
        cells.back().push_back(word);
    }
    return cells;
}

} // namespace mirvak

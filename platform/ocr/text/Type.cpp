#include "Type.h"

#include "Unicode.h"

#include <algorithm>

namespace mirvak {

namespace {

// Heights of print in ems of usual fonts: small letters, what rises above them, what hangs below the line.
constexpr double smallLetter = 0.46, rise = 0.22, descent = 0.21;
// Ems. Justified lines stretch a space to hardly more than one; in a row of cells no space is stretched.
constexpr double cellGap = 1.6, narrowGap = 0.9;

bool rises(char32_t c)
{
    static const std::u32string tall = U"bdfhijklt\u0431\u0444\u0439\u0451!?()[]{}/&%$@#\"'";
    const bool capital = isLetter(c) && !isLowercase(c);
    return capital || isDigit(c) || tall.find(c) != std::u32string::npos;
}

bool descends(char32_t c)
{
    static const std::u32string deep =
        U"gjpqyQ\u0440\u0443\u0444\u0446\u0449\u0434\u0414\u0426\u0429,;()[]{}/@$";
    return deep.find(c) != std::u32string::npos;
}

// The share of the em that the word's letters cover.
double coverOf(const std::u32string& text)
{
    double cover = smallLetter;
    if (std::any_of(text.begin(), text.end(), rises))
        cover += rise;
    if (std::any_of(text.begin(), text.end(), descends))
        cover += descent;
    return cover;
}

constexpr size_t fewIdeographs = 4;

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

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
    std::vector<double> ems;
    const bool ideographs = isIdeographicLine(line);
    for (size_t i = 0; i < line.words.size(); ++i) {
        const Box& box = line.words[i].box;
        const std::u32string text = fromUtf8(line.words[i].text);
        if (ideographs && std::all_of(text.begin(), text.end(), isIdeographic)) {
            // Each takes one em; their boxes are too rough to measure heights.
            const int next = i + 1 < line.words.size() ? line.words[i + 1].box.left : box.right;
            ems.push_back(static_cast<double>(next - box.left) / static_cast<double>(text.size()));
        } else if (!ideographs && std::any_of(text.begin(), text.end(), isReadable)) {
            ems.push_back(box.height() / coverOf(text));
        }
    }
    if (ems.empty() || (ideographs && ems.size() < fewIdeographs)) // most may be punctuation
        return line.box.height();
    return median(std::move(ems));
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
    const double em = emOf(line);
    const auto split = [&](double gap) {
        std::vector<std::vector<ReadWord>> cells;
        for (const ReadWord& word : line.words) {
            if (cells.empty() || word.box.left - cells.back().back().box.right > gap * em)
                cells.emplace_back();
            cells.back().push_back(word);
        }
        return cells;
    };
    auto cells = split(cellGap);
    return cells.size() > 1 ? split(narrowGap) : cells;
}

} // namespace mirvak

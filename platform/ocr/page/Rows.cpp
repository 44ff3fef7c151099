#include "Rows.h"

#include <algorithm>

namespace mirvak {

namespace {

bool isLetter(const cv::Rect& mark, int height)
{
    return mark.height * 2 > height && mark.height < 4 * height;
}

int middleOf(const cv::Rect& box)
{
    return box.y + box.height / 2;
}

// Marks of one row from the left, up to the gap before `longest`.
cv::Rect cutToWords(std::vector<cv::Rect> marks, int markHeight, int longest)
{
    std::sort(marks.begin(), marks.end(), [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
    cv::Rect cut = marks.front(), lastWord = marks.front();
    for (const cv::Rect& mark : marks) {
        if (mark.x - cut.br().x > markHeight / 3)
            lastWord = cut;
        if ((cut | mark).width > longest)
            return lastWord.width * 3 > longest ? lastWord : cut;
        cut |= mark;
    }
    return cut;
}

} // namespace

std::vector<cv::Rect> rowsOf(const std::vector<cv::Rect>& marks, int markHeight)
{
    std::vector<std::pair<int, int>> spans; // the middle of each letter, so that tight rows stay apart
    for (const cv::Rect& mark : marks) {
        if (isLetter(mark, markHeight))
            spans.emplace_back(middleOf(mark) - markHeight / 4, middleOf(mark) + markHeight / 4);
    }
    std::sort(spans.begin(), spans.end());
    std::vector<std::pair<int, int>> bands;
    for (const auto& [from, to] : spans) {
        if (!bands.empty() && from <= bands.back().second)
            bands.back().second = std::max(bands.back().second, to);
        else
            bands.emplace_back(from, to);
    }
    std::vector<cv::Rect> rows(bands.size());
    for (const cv::Rect& mark : marks) {
        const int middle = middleOf(mark);
        const auto band = std::find_if(bands.begin(), bands.end(), [&](const auto& b) {
            return middle >= b.first && middle <= b.second;
        });
        if (band != bands.end())
            rows[static_cast<size_t>(band - bands.begin())] |= mark;
    }
    return rows;
}

std::vector<cv::Rect> sampleRows(const Marks& marks, int wanted, int longest)
{
    std::vector<cv::Rect> rows;
    for (const cv::Rect& row : rowsOf(marks.boxes, marks.height)) {
        std::vector<cv::Rect> inside;
        for (const cv::Rect& mark : marks.boxes) {
            if ((mark & row) == mark)
                inside.push_back(mark);
        }
        const cv::Rect cut = inside.empty() ? row : cutToWords(inside, marks.height, longest);
        if (cut.height < 4 * marks.height)
            rows.push_back(cut);
    }
    // Long first, the longest of equal ones from where they stand: the middle third, then the rest.
    std::stable_sort(rows.begin(), rows.end(), [&](const cv::Rect& a, const cv::Rect& b) {
        return std::min(a.width, longest / 2) > std::min(b.width, longest / 2);
    });
    const auto rich =
        std::find_if(rows.begin(), rows.end(), [&](const cv::Rect& row) { return row.width * 2 < longest; });
    const auto candidates =
        std::max<long>(rich - rows.begin(), std::min<long>(wanted, rows.end() - rows.begin()));
    std::vector<cv::Rect> chosen;
    for (int i = 0; i < wanted && candidates > 0; ++i) {
        const long at = (2 * i + 1) * candidates / (2 * wanted);
        if (chosen.empty() || chosen.back() != rows[static_cast<size_t>(at)])
            chosen.push_back(rows[static_cast<size_t>(at)]);
    }
    return chosen;
}

} // namespace mirvak

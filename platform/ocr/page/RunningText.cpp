#include "RunningText.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr size_t leastLines = 5;
constexpr double leastWidth = 11;   // heights of a mark
constexpr double widestPitch = 4.2; // the same
constexpr double leastCover = 0.75; // of a line's width; cells of a table leave more white
constexpr double fullLine = 0.72;   // of the column's width near it
constexpr double leastFull = 0.6;   // of the lines: headings and ends of paragraphs are short
constexpr size_t nearLines = 3;

} // namespace

RunningText::RunningText(const Blocks& blocks)
{
    std::vector<const Piece*> pieces;
    for (const TextBlock* block : blocks) {
        for (const Piece& row : block->rows)
            pieces.push_back(&row);
    }
    // The large ones first: scraps and worn letters join the line that they lie in.
    std::stable_sort(pieces.begin(), pieces.end(), [](const Piece* a, const Piece* b) {
        return a->box.area() > b->box.area();
    });
    for (const Piece* piece : pieces)
        add(*piece);
    std::sort(lines_.begin(), lines_.end(), [](const Line& a, const Line& b) { return a.box.y < b.box.y; });
}

void RunningText::add(const Piece& piece)
{
    const auto line = std::find_if(lines_.begin(), lines_.end(), [&](const Line& other) {
        const int over = std::min(piece.box.br().y, other.box.br().y) - std::max(piece.box.y, other.box.y);
        return over * 2 > std::min(piece.box.height, other.box.height);
    });
    if (line == lines_.end()) {
        lines_.push_back({piece.box, piece.box.width});
        return;
    }
    const int left = std::min(line->box.x, piece.box.x), right = std::max(line->box.br().x, piece.box.br().x);
    line->box.x = left; // its height stays, or lines would grow together
    line->box.width = right - left;
    line->covered += piece.box.width;
}

std::vector<int> RunningText::levels() const
{
    std::vector<int> levels;
    for (const Line& line : lines_)
        levels.push_back(line.box.y + line.box.height / 2);
    std::sort(levels.begin(), levels.end());
    return levels;
}

int RunningText::pitch() const
{
    const std::vector<int> all = levels();
    std::vector<int> pitches;
    for (size_t i = 1; i < all.size(); ++i)
        pitches.push_back(all[i] - all[i - 1]);
    if (pitches.empty())
        return 0;
    const auto middle = pitches.begin() + static_cast<std::ptrdiff_t>(pitches.size() / 2);
    std::nth_element(pitches.begin(), middle, pitches.end());
    return *middle;
}

// Of the column there: lines get shorter together where text runs round a picture.
int RunningText::widthNear(size_t line) const
{
    int left = lines_[line].box.x, right = lines_[line].box.br().x;
    const size_t end = std::min(lines_.size(), line + nearLines + 1);
    for (size_t i = line - std::min(line, nearLines); i < end; ++i) {
        left = std::min(left, lines_[i].box.x);
        right = std::max(right, lines_[i].box.br().x);
    }
    return right - left;
}

bool RunningText::fills(int markHeight) const
{
    if (lines_.size() < leastLines || pitch() > widestPitch * markHeight)
        return false;
    cv::Rect all;
    size_t full = 0;
    for (size_t i = 0; i < lines_.size(); ++i) {
        const Line& line = lines_[i];
        all |= line.box;
        full += line.covered >= leastCover * line.box.width && line.box.width >= fullLine * widthNear(i);
    }
    return all.width >= leastWidth * markHeight &&
           static_cast<double>(full) >= leastFull * static_cast<double>(lines_.size());
}

} // namespace mirvak

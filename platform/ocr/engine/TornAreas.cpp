#include "TornAreas.h"

#include "Boxes.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr double likeSpaces = 1.3;  // times the line's widest space: white that is one of them
constexpr size_t leastSpaces = 2;   // in a line that can tell
constexpr int leastLines = 2;       // that go on
constexpr double mostLines = 0.6;   // of those beside each other
constexpr double mostOfThird = 0.2; // of another area may lie in what the two would be together
constexpr double within = 0.9;      // or no less than that

/// What the recogniser's lines say about two areas.
struct Seam
{
    int beside = 0;  ///< lines that stand in one of them on the other's levels
    int goingOn = 0; ///< lines that stand in both, and go on
};

bool holds(const TextArea& area, const ReadWord& word)
{
    const cv::Rect box = rectOf(word.box);
    return area.box.contains((box.tl() + box.br()) / 2);
}

// The line may lie over more columns, so only spaces within the two areas tell how wide they are in it.
bool goesOn(const ReadLine& line, size_t at, const TextArea& left, const TextArea& right)
{
    const auto isWithin = [&](size_t i, const TextArea& area) {
        return holds(area, line.words[i - 1]) && holds(area, line.words[i]);
    };
    size_t spaces = 0;
    int widest = 0;
    for (size_t i = 1; i < line.words.size(); ++i) {
        if (!isWithin(i, left) && !isWithin(i, right))
            continue;
        widest = std::max(widest, line.words[i].box.left - line.words[i - 1].box.right);
        ++spaces;
    }
    return spaces >= leastSpaces &&
           line.words[at].box.left - line.words[at - 1].box.right <= likeSpaces * widest;
}

Seam seamOf(const TextArea& left, const TextArea& right, const ReadBlock& lines)
{
    const int top = std::max(left.box.y, right.box.y);
    const int bottom = std::min(left.box.br().y, right.box.br().y);
    Seam seam;
    for (const ReadLine& line : lines) {
        const int middle = (line.box.top + line.box.bottom) / 2;
        if (middle < top || middle >= bottom)
            continue;
        bool isBeside = false;
        for (size_t i = 0; i < line.words.size(); ++i) {
            isBeside = isBeside || holds(left, line.words[i]) || holds(right, line.words[i]);
            if (i > 0 && holds(left, line.words[i - 1]) && holds(right, line.words[i]) &&
                goesOn(line, i, left, right))
                ++seam.goingOn;
        }
        seam.beside += isBeside ? 1 : 0;
    }
    return seam;
}

bool isTorn(const TextArea& a, const TextArea& b, const ReadBlock& lines)
{
    const bool isFirstLeft = a.box.x < b.box.x;
    const Seam seam = seamOf(isFirstLeft ? a : b, isFirstLeft ? b : a, lines);
    return seam.goingOn >= leastLines && seam.goingOn >= mostLines * seam.beside;
}

// What the two would be together must not reach into a third: a caption in a gutter stands so close to its
// columns that its lines seem to go on in them. One that lies within is torn off as they are.
bool isFree(const std::vector<TextArea>& areas, size_t i, size_t j)
{
    const cv::Rect both = areas[i].box | areas[j].box;
    for (size_t k = 0; k < areas.size(); ++k) {
        const double over = (both & areas[k].box).area(), whole = areas[k].box.area();
        if (k != i && k != j && over > mostOfThird * whole && over < within * whole)
            return false;
    }
    return true;
}

void join(TextArea& area, const TextArea& other)
{
    std::vector<cv::Rect> foreign;
    const auto keep = [&](const TextArea& from, const TextArea& beside) {
        for (const cv::Rect& mark : from.foreign) {
            if (!beside.box.contains((mark.tl() + mark.br()) / 2))
                foreign.push_back(mark);
        }
    };
    keep(area, other);
    keep(other, area);
    area.foreign = std::move(foreign);
    area.box |= other.box;
}

} // namespace

void joinTornAreas(std::vector<TextArea>& areas, const ReadBlock& lines)
{
    for (size_t i = 0; i < areas.size(); ++i) {
        for (size_t j = i + 1; j < areas.size();) {
            if (areas[i].isSideways || areas[j].isSideways || !isFree(areas, i, j) ||
                !isTorn(areas[i], areas[j], lines)) {
                ++j;
                continue;
            }
            join(areas[i], areas[j]);
            areas.erase(areas.begin() + static_cast<std::ptrdiff_t>(j));
        }
    }
}

} // namespace mirvak

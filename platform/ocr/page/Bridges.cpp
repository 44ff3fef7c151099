#include "Bridges.h"

#include <algorithm>
#include <cstdlib>

namespace mirvak {

namespace {

// In heights of a mark.
constexpr double leastGap = 1.1; // or of the letters beside it: headings are set wide
constexpr double usual = 0.5;    // share of the letters that are lower
constexpr double onEdge = 0.8;   // of a line's end from that of the others, a comma more or less
constexpr double leastLine = 5;  // shorter ones make no edge
constexpr double reach = 5.6;    // distances of lines, that an edge is looked for
constexpr int leastLines = 3;    // with that edge

struct White
{
    int from, to; ///< px
};

/// What the lines above or below say about the white.
struct Edge
{
    int ending = 0, beginning = 0;
    bool isCrossed = false;

    bool stands() const { return !isCrossed && std::max(ending, beginning) >= leastLines; }
};

cv::Rect around(const std::vector<cv::Rect>& marks)
{
    cv::Rect box;
    for (const cv::Rect& mark : marks)
        box |= mark;
    return box;
}

int letterHeight(const std::vector<cv::Rect>& marks)
{
    std::vector<int> heights;
    heights.reserve(marks.size());
    for (const cv::Rect& mark : marks)
        heights.push_back(mark.height);
    const auto at =
        heights.begin() + static_cast<std::ptrdiff_t>(usual * static_cast<double>(heights.size()));
    std::nth_element(heights.begin(), at, heights.end());
    return *at;
}

class Bridges
{
public:
    Bridges(const std::vector<Piece>& pieces, int height, int pitch)
        : pieces_(pieces), height_(height), reach_(reach * pitch)
    {
    }

    std::vector<Piece> parts(const Piece& piece) const
    {
        std::vector<cv::Rect> marks = piece.marks;
        std::sort(marks.begin(), marks.end(), [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
        const double least = leastGap * std::max(height_, letterHeight(marks));
        std::vector<Piece> all;
        std::vector<cv::Rect> part;
        int end = 0;
        for (const cv::Rect& mark : marks) {
            if (!part.empty() && mark.x - end >= least && isGutter(piece.box, {end, mark.x})) {
                all.push_back({around(part), part});
                part.clear();
            }
            part.push_back(mark);
            end = std::max(end, mark.br().x);
        }
        all.push_back({around(part), std::move(part)});
        return all;
    }

private:
    bool isGutter(const cv::Rect& line, const White& white) const
    {
        Edge above, below;
        int covering = 0;
        const int level = line.y + line.height / 2;
        for (const Piece& other : pieces_) {
            const int down = other.box.y + other.box.height / 2 - level;
            if (std::abs(down) > reach_ || std::abs(down) < height_)
                continue;
            covering += covers(other.box, line);
            look(other.box, white, down < 0 ? above : below);
        }
        return covering < leastLines && (above.stands() || below.stands());
    }

    // A column gets narrower beside a picture; its last full line only has a space there. Lines of a caption,
    // which are joined to the columns as that is, are fewer.
    bool covers(const cv::Rect& other, const cv::Rect& line) const
    {
        const double near = onEdge * height_;
        return other.x <= line.x + near && other.br().x >= line.br().x - near;
    }

    void look(const cv::Rect& other, const White& white, Edge& edge) const
    {
        const double near = onEdge * height_;
        edge.isCrossed = edge.isCrossed || (other.x < white.to - near && other.br().x > white.from + near);
        if (other.width < leastLine * height_)
            return;
        edge.ending += std::abs(other.br().x - white.from) <= near;
        edge.beginning += std::abs(other.x - white.to) <= near;
    }

    const std::vector<Piece>& pieces_;
    int height_;
    double reach_;
};

} // namespace

// A line that is parted may be the last one that went over the white beside the next.
void partBridges(std::vector<Piece>& pieces, int markHeight, int pitch)
{
    for (size_t before = 0; before != pieces.size();) {
        before = pieces.size();
        const Bridges bridges(pieces, markHeight, pitch);
        std::vector<Piece> parted;
        for (const Piece& piece : pieces) {
            for (Piece& part : bridges.parts(piece))
                parted.push_back(std::move(part));
        }
        pieces = std::move(parted);
    }
}

} // namespace mirvak

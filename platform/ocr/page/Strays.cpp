#include "Strays.h"

#include <algorithm>
#include <cstdlib>

namespace mirvak {

namespace {

constexpr double strayGap = 1.1;                // heights of a mark
constexpr double strayLines = 1.6;              // distances of lines: those above and below
constexpr size_t strayLine = 6, mostStrays = 2; // marks

class Strays
{
public:
    Strays(std::vector<Piece>& pieces, int height, int pitch)
        : pieces_(pieces), gap_(strayGap * height), near_(strayLines * pitch)
    {
    }

    void part()
    {
        std::vector<Piece> strays;
        for (Piece& piece : pieces_) {
            if (piece.marks.size() < strayLine)
                continue;
            std::sort(piece.marks.begin(), piece.marks.end(), [](const cv::Rect& a, const cv::Rect& b) {
                return a.x < b.x;
            });
            for (size_t count = mostStrays; count > 0; --count) {
                if (standsOff(piece, piece.marks.size() - count)) {
                    strays.push_back(taken(piece, piece.marks.size() - count));
                    break;
                }
            }
        }
        pieces_.insert(pieces_.end(), strays.begin(), strays.end());
    }

private:
    bool standsOff(const Piece& piece, size_t from) const
    {
        int end = 0;
        for (size_t i = 0; i < from; ++i)
            end = std::max(end, piece.marks[i].br().x);
        if (piece.marks[from].x - end < gap_)
            return false;
        bool some = false;
        for (const Piece& other : pieces_) {
            const int down =
                std::abs(other.box.y + other.box.height / 2 - piece.box.y - piece.box.height / 2);
            if (&other == &piece || down > near_ || other.box.br().x <= piece.box.x)
                continue;
            if (other.box.br().x > end + gap_)
                return false;
            some = some || other.box.x < end;
        }
        return some;
    }

    static Piece taken(Piece& piece, size_t from)
    {
        Piece stray;
        stray.marks.assign(piece.marks.begin() + static_cast<std::ptrdiff_t>(from), piece.marks.end());
        piece.marks.resize(from);
        const auto around = [](const std::vector<cv::Rect>& marks) {
            cv::Rect box;
            for (const cv::Rect& mark : marks)
                box |= mark;
            return box;
        };
        piece.box = around(piece.marks);
        stray.box = around(stray.marks);
        return stray;
    }

    std::vector<Piece>& pieces_;
    double gap_, near_;
};

} // namespace

void partStrays(std::vector<Piece>& pieces, int markHeight, int pitch)
{
    Strays(pieces, markHeight, pitch).part();
}

} // namespace mirvak

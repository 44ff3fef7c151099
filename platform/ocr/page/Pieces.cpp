#include "Pieces.h"

#include "Bridges.h"
#include "Strays.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double cellsPerHeight = 6;
// The narrower a strip, the more lines must it pass: in lines that are set wide, three wide spaces often
// stand below each other.
struct StripShape
{
    double width;       ///< heights of a mark
    double lines;       ///< that it passes
    double leastHeight; ///< heights of a mark
};
constexpr StripShape stripShapes[] = {{1.1, 6.2, 14}, {2, 4.2, 9}, {3.2, 2.2, 5}};

// A strip passes lines; blank places do not count: margins, pictures.
constexpr double blankWidth = 8; // heights of a mark
constexpr double blankLines = 3;
constexpr double usualPitch = 2.5; // heights of a mark, where no line stands over another

// In heights of a mark.
constexpr double mostPitch = 5;     // lines further apart are rows of a table
constexpr double widestSpace = 3;   // between words that no strip parts
constexpr double offLevel = 0.6;    // a letter's middle from that of its line
constexpr double leastLetter = 0.4; // smaller marks are dots, accents or dirt
constexpr double tallOfPitch = 1.1, tallOfLine = 1.6;
constexpr double leastRun = 5;     // for the distance of lines
constexpr double wordSpace = 0.85; // of the letters beside it: headings are set wide

/// White strips of a page.
class Strips
{
public:
    Strips() = default;
    Strips(const std::vector<cv::Rect>& letters, int height, double pitch)
        : cell_(std::max(1.0, height / cellsPerHeight))
    {
        cv::Rect area;
        for (const cv::Rect& box : letters)
            area |= box;
        cv::Mat white(at(area.br().y) + 1, at(area.br().x) + 1, CV_8UC1, cv::Scalar(255));
        for (const cv::Rect& box : letters) {
            const cv::Point from(at(box.x), at(box.y)), to(at(box.br().x), at(box.br().y));
            white(cv::Rect(from, cv::Size(std::max(1, to.x - from.x), std::max(1, to.y - from.y))) &
                  cv::Rect({0, 0}, white.size()))
                .setTo(0);
        }
        const double line = pitch > 0 ? pitch : usualPitch * height;
        white &= ~opened(white, blankWidth * height, blankLines * line);
        white_ = cv::Mat(white.size(), CV_8UC1, cv::Scalar(0));
        for (const StripShape& shape : stripShapes) {
            white_ |=
                opened(white, shape.width * height, std::max(shape.leastHeight * height, shape.lines * line));
        }
    }

    bool part(int from, int to, int y) const
    {
        if (white_.empty() || to <= from)
            return false;
        const int row = std::clamp(at(y), 0, white_.rows - 1);
        const int left = std::clamp(at(from), 0, white_.cols), right = std::clamp(at(to), left, white_.cols);
        return right > left && cv::countNonZero(white_(cv::Rect(left, row, right - left, 1))) > 0;
    }

private:
    int at(int px) const { return cvRound(px / cell_); }

    /// The union of all white rectangles of that size, px.
    cv::Mat opened(const cv::Mat& white, double width, double height) const
    {
        const cv::Size size(std::clamp(cvRound(width / cell_), 1, white.cols),
                            std::clamp(cvRound(height / cell_), 1, white.rows));
        cv::Mat united;
        cv::morphologyEx(white, united, cv::MORPH_OPEN, cv::getStructuringElement(cv::MORPH_RECT, size));
        return united;
    }

    double cell_ = 1;
    cv::Mat white_;
};

class Joiner
{
public:
    /// @param pitch px, from line to line; 0 when it is not known
    Joiner(const std::vector<cv::Rect>& letters, int height, int pitch, const Strips& strips)
        : letters_(letters), height_(height), pitch_(pitch), strips_(strips)
    {
    }

    std::vector<Piece> run(double widest)
    {
        widest_ = cvRound(widest * height_);
        for (const cv::Rect& letter : letters_)
            place(letter);
        std::vector<Piece> pieces;
        for (Open& open : open_)
            pieces.push_back(std::move(open.piece));
        return merged(std::move(pieces));
    }

private:
    struct Open
    {
        Piece piece;
        double level, size; // px, of the last letters
    };

    // From the left: each letter goes on where a piece ends nearest before it on its level.
    void place(const cv::Rect& letter)
    {
        const double level = letter.y + letter.height / 2.0;
        recent_.erase(std::remove_if(recent_.begin(),
                                     recent_.end(),
                                     [&](size_t i) {
                                         return letter.x - open_[i].piece.box.br().x >
                                                std::max<double>(widest_, 1.5 * open_[i].size);
                                     }),
                      recent_.end());
        size_t best = open_.size();
        double least = 0;
        for (const size_t i : recent_) {
            const Open& open = open_[i];
            const double off = std::abs(open.level - level);
            if (off > offLevel * std::max<double>(open.size, height_) || isTooTall(letter, open.size) ||
                (!isWordSpace(open, letter) &&
                 strips_.part(open.piece.box.br().x, letter.x, static_cast<int>(level))))
                continue;
            if (best == open_.size() || off < least) {
                best = i;
                least = off;
            }
        }
        if (best == open_.size()) {
            open_.push_back({{letter, {letter}}, level, static_cast<double>(letter.height)});
            recent_.push_back(best);
            return;
        }
        Open& open = open_[best];
        open.piece.box |= letter;
        open.piece.marks.push_back(letter);
        open.level += (level - open.level) / 4;
        open.size += (letter.height - open.size) / 4;
    }

    // Between large letters: the gutter of the columns below may go on between two words of their heading.
    bool isWordSpace(const Open& open, const cv::Rect& letter) const
    {
        return letter.x - open.piece.box.br().x < wordSpace * (open.size + letter.height) / 2;
    }

    // What reaches over two lines is a letter of neither and would tie them to each other.
    bool isTooTall(const cv::Rect& letter, double size) const
    {
        return pitch_ > 0 && letter.height > tallOfPitch * pitch_ && letter.height > tallOfLine * size;
    }

    // Parts of ideographs and accents, which lie off the line's middle.
    std::vector<Piece> merged(std::vector<Piece> pieces) const
    {
        std::sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) {
            return a.marks.size() > b.marks.size();
        });
        std::vector<Piece> whole;
        for (Piece& piece : pieces) {
            const auto line = std::find_if(
                whole.begin(), whole.end(), [&](const Piece& other) { return belong(other, piece); });
            if (line == whole.end()) {
                whole.push_back(std::move(piece));
                continue;
            }
            line->box |= piece.box;
            line->marks.insert(line->marks.end(), piece.marks.begin(), piece.marks.end());
        }
        return whole;
    }

    bool belong(const Piece& line, const Piece& part) const
    {
        const int over = std::min(line.box.br().y, part.box.br().y) - std::max(line.box.y, part.box.y);
        if (over * 2 < std::min(line.box.height, part.box.height) || isTooTall(part.box, line.box.height) ||
            part.box.height > 2 * line.box.height || line.box.height > 4 * part.box.height + 2 * height_)
            return false;
        const int from = std::min(line.box.br().x, part.box.br().x);
        const int to = std::max(line.box.x, part.box.x);
        return to - from <= widest_ && !strips_.part(from, to, part.box.y + part.box.height / 2);
    }

    const std::vector<cv::Rect>& letters_;
    int height_, pitch_, widest_ = 0;
    const Strips& strips_;
    std::vector<Open> open_;
    std::vector<size_t> recent_;
};

int pitchOf(const std::vector<Piece>& pieces, int height)
{
    std::vector<const Piece*> lines;
    for (const Piece& piece : pieces) {
        if (piece.box.width > leastRun * height)
            lines.push_back(&piece);
    }
    std::vector<int> pitches;
    for (const Piece* line : lines) {
        int nearest = 0;
        for (const Piece* below : lines) {
            const int over =
                std::min(line->box.br().x, below->box.br().x) - std::max(line->box.x, below->box.x);
            const int down = below->box.y + below->box.height / 2 - line->box.y - line->box.height / 2;
            if (down > height && over * 2 > std::min(line->box.width, below->box.width) &&
                (nearest == 0 || down < nearest))
                nearest = down;
        }
        if (nearest > 0)
            pitches.push_back(nearest);
    }
    if (pitches.empty())
        return 0;
    const auto middle = pitches.begin() + static_cast<std::ptrdiff_t>(pitches.size() / 2);
    std::nth_element(pitches.begin(), middle, pitches.end());
    return *middle;
}

} // namespace

Pieces piecesOf(const Marks& marks)
{
    std::vector<cv::Rect> letters;
    for (const cv::Rect& box : marks.boxes) {
        if (std::max(box.width, box.height) >= leastLetter * marks.height)
            letters.push_back(box);
    }
    if (letters.empty() || marks.height == 0)
        return {};
    std::sort(letters.begin(), letters.end(), [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
    Pieces pieces;
    pieces.pitch = pitchOf(Joiner(letters, marks.height, 0, Strips()).run(1), marks.height);
    const Strips strips(letters, marks.height, std::min<double>(pieces.pitch, mostPitch * marks.height));
    pieces.all = Joiner(letters, marks.height, pieces.pitch, strips).run(widestSpace);
    partStrays(pieces.all, marks.height, pieces.pitch);
    partBridges(pieces.all, marks.height, pieces.pitch);
    return pieces;
}

} // namespace mirvak

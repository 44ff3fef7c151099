#include "Strips.h"

#include "Boxes.h"
#include "Unicode.h"

#include <algorithm>
#include <numeric>

namespace mirvak {

namespace {

constexpr double leastLetter = 0.6, mostLetter = 4;  // heights of a mark
constexpr int widestLetter = 3, narrowestLetter = 8; // of the other side's length
constexpr double smallOfWhole = 0.6;                 // of a word's height: its small letters
constexpr double widestOfWord = 1.8;                 // heights of a small letter, for each of a word
constexpr double sameLevel = 0.5;  // of the lower one's height, that a letter and its line share
constexpr double atWord = 0.35;    // heights of a mark, from a word to a letter that its box has missed
constexpr double nextLine = 1.3;   // the same, between strips with no line between them
constexpr double mostOfArea = 0.6; // of its height: to read the area at once costs no more

bool isLetter(const cv::Rect& mark, int height)
{
    return mark.height > leastLetter * height && mark.height < mostLetter * height &&
           mark.width < widestLetter * mark.height && mark.height < narrowestLetter * mark.width;
}

// What takes so much room has lost most of its letters.
bool isTooWide(const ReadWord& word, int height)
{
    const auto letters = static_cast<double>(fromUtf8(word.text).size());
    const double size = std::max<double>(height, smallOfWhole * word.box.height());
    return word.box.width() > widestOfWord * size * (letters + 1);
}

class Strips
{
public:
    Strips(const TextArea& area, const ReadBlock& lines, int markHeight)
        : area_(area), lines_(lines), gap_(cvRound(nextLine * markHeight))
    {
    }

    void add(const cv::Rect& mark)
    {
        Strip strip{{area_.box.x, mark.y, area_.box.width, mark.height}, {}};
        for (size_t i = 0; i < lines_.size(); ++i) {
            const cv::Rect line = rectOf(lines_[i].box);
            if (shared(line.y, line.br().y, mark.y, mark.br().y) <=
                sameLevel * std::min(line.height, mark.height))
                continue;
            strip.lines.push_back(i);
            strip.box |= {area_.box.x, line.y, area_.box.width, line.height};
        }
        join(std::move(strip));
    }

    std::vector<Strip> take()
    {
        std::sort(
            strips_.begin(), strips_.end(), [](const Strip& a, const Strip& b) { return a.box.y < b.box.y; });
        int height = 0;
        for (const Strip& strip : strips_)
            height += strip.box.height;
        if (height > mostOfArea * area_.box.height)
            strips_ = {whole()};
        return std::move(strips_);
    }

private:
    // Those that follow each other are one.
    void join(Strip strip)
    {
        for (size_t i = strips_.size(); i-- > 0;) {
            if (shared(strips_[i].box.y, strips_[i].box.br().y, strip.box.y, strip.box.br().y) <= -gap_)
                continue;
            strip.box |= strips_[i].box;
            strip.lines.insert(strip.lines.end(), strips_[i].lines.begin(), strips_[i].lines.end());
            strips_.erase(strips_.begin() + static_cast<std::ptrdiff_t>(i));
        }
        std::sort(strip.lines.begin(), strip.lines.end());
        strip.lines.erase(std::unique(strip.lines.begin(), strip.lines.end()), strip.lines.end());
        strips_.push_back(std::move(strip));
    }

    Strip whole() const
    {
        Strip strip{area_.box, std::vector<size_t>(lines_.size())};
        std::iota(strip.lines.begin(), strip.lines.end(), size_t(0));
        return strip;
    }

    const TextArea& area_;
    const ReadBlock& lines_;
    int gap_;
    std::vector<Strip> strips_;
};

} // namespace

std::vector<Strip> leftOut(const TextArea& area, const ReadBlock& lines, const Marks& marks)
{
    const int beside = cvRound(atWord * marks.height);
    std::vector<cv::Rect> read;
    for (const ReadLine& line : lines) {
        for (const ReadWord& word : line.words) {
            if (!isTooWide(word, marks.height))
                read.emplace_back(
                    word.box.left - beside, word.box.top, word.box.width() + 2 * beside, word.box.height());
        }
    }
    Strips strips(area, lines, marks.height);
    for (const cv::Rect& mark : marks.boxes) {
        const cv::Point middle = (mark.tl() + mark.br()) / 2;
        const auto hasIt = [&](const cv::Rect& word) {
            return middle.y >= word.y && middle.y < word.br().y &&
                   shared(mark.x, mark.br().x, word.x, word.br().x) > 0;
        };
        if (isLetter(mark, marks.height) && area.box.contains(middle) &&
            std::none_of(read.begin(), read.end(), hasIt) &&
            std::find(area.foreign.begin(), area.foreign.end(), mark) == area.foreign.end())
            strips.add(mark);
    }
    return strips.take();
}

std::vector<Strip> lostLines(const TextArea& area, const ReadBlock& lines, const Marks& marks)
{
    std::vector<Strip> strips = leftOut(area, lines, marks);
    strips.erase(
        std::remove_if(strips.begin(), strips.end(), [](const Strip& strip) { return !strip.lines.empty(); }),
        strips.end());
    return strips;
}

} // namespace mirvak

#include "GlyphCheck.h"

#include "CharacterCells.h"
#include "GlyphFeatures.h"
#include "Unicode.h"

#include <algorithm>
#include <optional>

namespace mirvak {

namespace {

constexpr float poor = 75; // percent
constexpr float sure = 90; // the same; ideographs that are read with more are hardly ever wrong
// Distances from the book, in units of what is usual on the page, which is more on a worn one.
constexpr double alike = 2;          // looks like the character
constexpr double roughlyAlike = 2.5; // of those about it, which only tell that the cuts are right
constexpr double unlike = 5;         // looks like no character
constexpr double clearly = 1.5;      // by how much another character has to be nearer
constexpr size_t leastSample = 8;    // characters that tell what is usual
constexpr double usually = 95;       // on pages that have fewer
constexpr double leastUsual = 90, mostUsual = 130; // what is farther tells of cuts, not of the print
constexpr size_t around = 6;                       // ideographs about a doubtful one that are asked
constexpr double margin = 0.17;                    // of a line's height, above and below
constexpr double sideMargin = 0.5;                 // the same, left and right

constexpr char32_t notThere = 0; // in place of a character that the line has no room for

bool isHan(char32_t c)
{
    return c >= 0x4e00 && c < 0xa000;
}

bool isPunctuation(char32_t c)
{
    return !isHan(c) && (!isReadable(c) || isIdeographic(c)); // also that of full width
}

/// One character of a line, as it was read and as it looks.
struct Glyph
{
    size_t index = 0; ///< in the line
    size_t word = 0, at = 0;
    char32_t read = 0;
    float confidence = 0;
    cv::Mat place;                  ///< in the book's space; empty when nothing was seen of it
    std::optional<double> distance; ///< from what it was read as; nothing when the book does not have it
    bool isThere = true;            ///< there is a place for it in the line

    bool isDoubtful() const { return isHan(read) && confidence < sure; }
};

/// The ideographs of a line, and those beside which they stand.
class Line
{
public:
    Line(ReadLine& line, const cv::Mat& grey, const GlyphBook& book) : line_(line), book_(book)
    {
        for (size_t w = 0; w < line.words.size(); ++w) {
            texts_.push_back(fromUtf8(line.words[w].text));
            for (size_t i = 0; i < texts_[w].size(); ++i)
                glyphs_.push_back({glyphs_.size(), w, i, texts_[w][i], line.words[w].confidence, {}, {}});
        }
        if (std::any_of(glyphs_.begin(), glyphs_.end(), [](const Glyph& g) { return g.isDoubtful(); }))
            look(grey);
    }

    /// Distances of those that were read well.
    void sample(std::vector<double>& distances) const
    {
        for (const Glyph& glyph : han_) {
            if (!glyph.isDoubtful() && glyph.distance)
                distances.push_back(*glyph.distance);
        }
    }

    void correct(double usual)
    {
        for (size_t i = 0; i < han_.size(); ++i) {
            if (!han_[i].isDoubtful() || !isConfirmedAround(i, usual))
                continue;
            const bool isSeen = !han_[i].place.empty();
            if (!han_[i].isThere || (isSeen && isSign(han_[i], usual)))
                put(han_[i], notThere);
            else if (isSeen)
                compare(han_[i], usual);
        }
        settle();
    }

private:
    void compare(Glyph& glyph, double usual)
    {
        const GlyphBook::Near best = book_.nearest(glyph.place, 1).front();
        const bool isOther = best.character != glyph.read;
        if (best.distance > alike * usual ||
            (isOther && glyph.distance && *glyph.distance < clearly * best.distance))
            return;
        // Its place may be that of a neighbour, who stands in none of his own or in a wrong one.
        const bool isTaken = std::any_of(han_.begin(), han_.end(), [&](const Glyph& other) {
            return other.read == best.character && !looksRoughlyLikeItself(other, usual) &&
                   (other.index + 1 == glyph.index || other.index == glyph.index + 1);
        });
        put(glyph, isTaken ? notThere : best.character);
        glyph.distance = best.distance;
        glyph.confidence = sure;
    }

    // The sign beside it was read twice: once as what it is, once as an ideograph that nothing looks like.
    // One whose cut took in the sign looks odd, too, but like itself more than like any other.
    bool isSign(const Glyph& glyph, double usual) const
    {
        const size_t at = glyph.index;
        const auto isSignAt = [&](size_t i) { return i < glyphs_.size() && isPunctuation(glyphs_[i].read); };
        if (glyph.confidence >= poor || !(isSignAt(at + 1) || (at > 0 && isSignAt(at - 1))))
            return false;
        const GlyphBook::Near best = book_.nearest(glyph.place, 1).front();
        return best.character != glyph.read && best.distance > unlike * usual;
    }

    void put(Glyph& glyph, char32_t character)
    {
        glyph.read = character;
        texts_[glyph.word][glyph.at] = character;
    }

    void look(const cv::Mat& grey)
    {
        const Box& box = line_.box;
        const int over = cvRound(margin * box.height()), beside = cvRound(sideMargin * box.height());
        const cv::Rect part =
            cv::Rect(box.left - beside, box.top - over, box.width() + 2 * beside, box.height() + 2 * over) &
            cv::Rect({0, 0}, grey.size());
        if (part.empty())
            return;
        std::vector<RoughCharacter> rough;
        for (const Glyph& glyph : glyphs_) {
            const Box& word = line_.words[glyph.word].box;
            const double share =
                (static_cast<double>(glyph.at) + 0.5) / static_cast<double>(texts_[glyph.word].size());
            rough.push_back(
                {word.left + share * word.width() - part.x, isHan(glyph.read), glyph.isDoubtful()});
        }
        const std::vector<cv::Rect> cells = characterCells(grey(part), rough);
        for (size_t i = 0; i < cells.size(); ++i) {
            if (!isHan(glyphs_[i].read))
                continue;
            glyphs_[i].isThere = !cells[i].empty();
            if (glyphs_[i].isThere && isNearDoubt(i)) {
                const cv::Mat features = glyphFeaturesOf(grey(part)(cells[i]));
                if (!features.empty()) {
                    glyphs_[i].place = book_.place(features);
                    glyphs_[i].distance = book_.distance(glyphs_[i].place, glyphs_[i].read);
                }
            }
            han_.push_back(glyphs_[i]);
        }
    }

    bool isNearDoubt(size_t i) const
    {
        const size_t reach =
            around + 1; // at the end of a line all of them stand on one side, and signs between
        const auto from = glyphs_.begin() + static_cast<std::ptrdiff_t>(i - std::min(i, reach));
        const auto to =
            glyphs_.begin() + static_cast<std::ptrdiff_t>(std::min(glyphs_.size(), i + reach + 1));
        return std::any_of(from, to, [](const Glyph& glyph) { return glyph.isDoubtful(); });
    }

    static bool looksRoughlyLikeItself(const Glyph& glyph, double usual)
    {
        return glyph.isThere && glyph.distance && *glyph.distance < roughlyAlike * usual;
    }

    bool isConfirmedAround(size_t i, double usual) const
    {
        const size_t count = std::min(around + 1, han_.size());
        const size_t from = std::min(i - std::min(i, around / 2), han_.size() - count);
        size_t confirmed = 0;
        for (size_t j = from; j < from + count; ++j)
            confirmed += j != i && looksRoughlyLikeItself(han_[j], usual) ? 1 : 0;
        return confirmed >= 2 && confirmed * 3 >= (count - 1) * 2; // two thirds of them
    }

    // A word is as sure as the least sure of its characters.
    void settle()
    {
        for (size_t w = 0; w < texts_.size() && !han_.empty(); ++w) {
            std::u32string text = texts_[w];
            text.erase(std::remove(text.begin(), text.end(), notThere), text.end());
            line_.words[w].text = toUtf8(text);
        }
        std::vector<bool> isSettled(texts_.size(), !han_.empty());
        for (const Glyph& glyph : glyphs_) {
            if (!isHan(glyph.read))
                isSettled[glyph.word] = false;
        }
        for (const Glyph& glyph : han_) {
            if (glyph.isDoubtful())
                isSettled[glyph.word] = false;
        }
        for (size_t w = 0; w < texts_.size(); ++w) {
            if (isSettled[w])
                line_.words[w].confidence = std::max(line_.words[w].confidence, sure);
        }
        std::vector<ReadWord>& words = line_.words;
        words.erase(std::remove_if(
                        words.begin(), words.end(), [](const ReadWord& word) { return word.text.empty(); }),
                    words.end());
    }

    ReadLine& line_;
    const GlyphBook& book_;
    std::vector<std::u32string> texts_; ///< of the words
    std::vector<Glyph> glyphs_, han_;   ///< all characters; the ideographs among them that were looked at
};

double usualOf(std::vector<double> distances)
{
    if (distances.size() < leastSample)
        return usually;
    const auto half = distances.begin() + static_cast<std::ptrdiff_t>(distances.size() / 2);
    std::nth_element(distances.begin(), half, distances.end());
    return std::clamp(*half, leastUsual, mostUsual);
}

bool isInPlace(const ReadLine& line)
{
    return std::all_of(line.words.begin(), line.words.end(), [](const ReadWord& w) { return w.frame == 0; });
}

} // namespace

void checkGlyphs(ReadPage& page,
                 const cv::Mat& grey,
                 const GlyphBook& book,
                 const std::function<bool()>& isOver)
{
    std::vector<Line> lines;
    std::vector<double> distances;
    for (ReadBlock& block : page.blocks) {
        for (ReadLine& line : block) {
            if (isOver() || !isInPlace(line))
                continue;
            lines.emplace_back(line, grey, book);
            lines.back().sample(distances);
        }
    }
    const double usual = usualOf(std::move(distances));
    for (Line& line : lines)
        line.correct(usual);
}

} // namespace mirvak

#include "DocumentBuilder.h"

#include "PageScale.h"
#include "TableRows.h"
#include "Type.h"
#include "Unicode.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace mirvak {

namespace {

// In ems.
constexpr double indentLeast = 0.8, indentMost = 5; // of a first line
constexpr double roomLatin = 0.6;                   // beyond the next word, that a full line does not leave
constexpr double roomIdeographs = 3.6; // a line may end early so that the next begins with no comma
constexpr double alignTolerance = 0.9;

constexpr double pauseShare = 1.35;  // of the usual distance of lines: more begins a paragraph
constexpr double otherSize = 1.25;   // times as large: another paragraph
constexpr double headingSize = 1.25; // times the body
constexpr double chapterSize = 1.55; // the same for a heading of the first level
constexpr size_t headingLines = 3;
constexpr double sameSize = 0.17; // share by which measured sizes of one type differ

struct Line
{
    const ReadLine* read = nullptr;
    std::vector<std::vector<ReadWord>> cells;
    double em = 0;
    bool ideographs = false;

    const Box& box() const { return read->box; }
    bool isRow() const { return cells.size() > 1; }
};

Area areaOf(const std::vector<Line>& lines)
{
    Area area{lines.front().box().left, lines.front().box().right};
    for (const Line& line : lines) {
        area.left = std::min(area.left, line.box().left);
        area.right = std::max(area.right, line.box().right);
    }
    return area;
}

double usualPitch(const std::vector<Line>& lines)
{
    std::vector<int> pitches;
    for (size_t i = 1; i < lines.size(); ++i)
        pitches.push_back(lines[i].box().bottom - lines[i - 1].box().bottom);
    if (pitches.empty())
        return 0;
    // Lines of a paragraph stand nearest to each other; paragraphs may be many.
    const auto at = pitches.begin() + static_cast<std::ptrdiff_t>(pitches.size() / 3);
    std::nth_element(pitches.begin(), at, pitches.end());
    return *at;
}

class BlockBuilder
{
public:
    BlockBuilder(const ReadBlock& block, const PageScale& scale, double bodySize, const IsWord& isWord)
        : scale_(scale), bodySize_(bodySize), isWord_(isWord)
    {
        for (const ReadLine& line : block)
            lines_.push_back({&line, cellsOf(line), emOf(line), isIdeographicLine(line)});
        area_ = areaOf(lines_);
        pitch_ = usualPitch(lines_);
    }

    /// A block as wide as the page's text is measured against that.
    void widenTo(const Area& page)
    {
        if (area_.width() * 5 > page.width() * 3)
            area_ = page;
    }

    std::vector<Paragraph> build()
    {
        for (size_t from = 0; from < lines_.size();) {
            size_t to = from + 1;
            if (lines_[from].isRow()) {
                while (to < lines_.size() && lines_[to].isRow())
                    ++to;
                addRows(from, to);
            } else {
                while (to < lines_.size() && !beginsParagraph(to))
                    ++to;
                addText(from, to);
            }
            from = to;
        }
        return std::move(paragraphs_);
    }

private:
    bool beginsParagraph(size_t i) const
    {
        const Line& line = lines_[i];
        const Line& above = lines_[i - 1];
        const double em = std::min(line.em, above.em);
        if (line.isRow() || std::max(line.em, above.em) > otherSize * em)
            return true;
        if (line.box().bottom - above.box().bottom > pauseShare * pitch_)
            return true;
        if (line.box().left - above.box().left > indentLeast * em &&
            line.box().left - area_.left > indentLeast * em)
            return true;
        // No first line is indented that far: a date at the right, a title in the middle.
        return above.box().left - line.box().left > indentMost * em || hadRoom(above, line);
    }

    // The line above ended although the next word would have found place there.
    bool hadRoom(const Line& above, const Line& line) const
    {
        const double room = area_.right - above.box().right;
        if (line.ideographs)
            return room > roomIdeographs * line.em;
        return room > line.read->words.front().box.width() + roomLatin * line.em;
    }

    void addText(size_t from, size_t to)
    {
        Paragraph paragraph = begin(from, to);
        MarkedText text;
        for (size_t i = from; i < to; ++i)
            appendLine(text, joinWords(lines_[i].read->words), isWord_);
        setText(paragraph, text);
        const bool large = sizeOf(from, to) > headingSize * bodySize_;
        if (large && to - from <= headingLines)
            paragraph.headingLevel = sizeOf(from, to) > chapterSize * bodySize_ ? 1 : 2;
        align(paragraph, from, to);
        paragraphs_.push_back(std::move(paragraph));
    }

    void addRows(size_t from, size_t to)
    {
        std::vector<std::vector<std::vector<ReadWord>>> rows;
        for (size_t i = from; i < to; ++i)
            rows.push_back(lines_[i].cells);
        const auto stops = tabStops(rows, area_, sizeOf(from, to), scale_);
        for (size_t i = from; i < to; ++i) {
            Paragraph paragraph = begin(i, i + 1);
            MarkedText text;
            for (const auto& cell : lines_[i].cells) {
                if (!text.empty())
                    text.append(U'\t', false);
                text.append(joinWords(cell));
            }
            setText(paragraph, text);
            paragraph.tabs = stops[i - from];
            paragraph.leftIndent = indentOf(lines_[i].box().left);
            paragraphs_.push_back(std::move(paragraph));
        }
    }

    static void setText(Paragraph& paragraph, const MarkedText& text)
    {
        paragraph.text = text.text();
        paragraph.unsure = text.spans();
    }

    Paragraph begin(size_t from, size_t to) const
    {
        Paragraph paragraph;
        paragraph.halfPoints = scale_.halfPoints(sizeOf(from, to));
        if (from > 0) {
            const double gap = lines_[from].box().top - lines_[from - 1].box().bottom - usualGap();
            paragraph.spaceBefore = std::clamp(scale_.twips(gap), 0, 480);
        }
        return paragraph;
    }

    double usualGap() const
    {
        return std::max(0.0, pitch_ - (lines_.empty() ? 0 : lines_[lines_.size() / 2].box().height()));
    }

    // Lines of about the body's size have the body's size.
    double sizeOf(size_t from, size_t to) const
    {
        std::vector<double> sizes;
        for (size_t i = from; i < to; ++i)
            sizes.push_back(lines_[i].em);
        std::sort(sizes.begin(), sizes.end());
        const double size = sizes[sizes.size() / 2];
        return std::abs(size - bodySize_) < sameSize * bodySize_ ? bodySize_ : size;
    }

    int indentOf(int left) const
    {
        const int indent = scale_.twips(left - area_.left);
        return left - area_.left > indentLeast * bodySize_ ? indent : 0;
    }

    void align(Paragraph& paragraph, size_t from, size_t to) const
    {
        const double tolerance = alignTolerance * bodySize_;
        bool centred = true, right = true, filled = to - from > 2;
        for (size_t i = from; i < to; ++i) {
            const Box& box = lines_[i].box();
            const int before = box.left - area_.left, after = area_.right - box.right;
            centred = centred && std::abs(before - after) < 2 * tolerance && before > 2 * tolerance;
            right = right && after < tolerance && before * 2 > area_.width();
            filled = filled && (i + 1 == to || after < tolerance);
        }
        if (centred || right) {
            paragraph.alignment = centred ? Alignment::centre : Alignment::right;
            return;
        }
        if (filled)
            paragraph.alignment = Alignment::justified;
        indent(paragraph, from, to);
    }

    void indent(Paragraph& paragraph, size_t from, size_t to) const
    {
        const int first = lines_[from].box().left;
        int left = first;
        for (size_t i = from + 1; i < to; ++i)
            left = i == from + 1 ? lines_[i].box().left : std::min(left, lines_[i].box().left);
        paragraph.leftIndent = indentOf(left);
        if (std::abs(first - left) > indentLeast * bodySize_)
            paragraph.firstIndent = scale_.twips(first - left);
    }

    const PageScale& scale_;
    double bodySize_;
    const IsWord& isWord_;
    std::vector<Line> lines_;
    Area area_;
    double pitch_ = 0;
    std::vector<Paragraph> paragraphs_;
};

constexpr int leastMargin = 360, mostBottom = 1440; // twips

void setPaper(Document& document, const ReadPage& page, const PageScale& scale, const Box& text)
{
    document.paperWidth = std::max(1440, scale.twips(page.width));
    document.paperHeight = std::max(1440, scale.twips(page.height));
    const auto margin = [&](int px, int paper) {
        return std::clamp(scale.twips(px), leastMargin, paper / 3);
    };
    document.marginLeft = margin(text.left, document.paperWidth);
    document.marginTop = margin(text.top, document.paperHeight);
    document.marginRight = margin(page.width - text.right, document.paperWidth);
    // The lower margin is no property of the page: a short text leaves a large one.
    document.marginBottom = std::min(mostBottom, margin(page.height - text.bottom, document.paperHeight));
}

Box textBox(const ReadPage& page)
{
    Box all{page.width, page.height, 0, 0};
    for (const ReadBlock& block : page.blocks) {
        for (const ReadLine& line : block) {
            all.left = std::min(all.left, line.box.left);
            all.top = std::min(all.top, line.box.top);
            all.right = std::max(all.right, line.box.right);
            all.bottom = std::max(all.bottom, line.box.bottom);
        }
    }
    return all;
}

} // namespace

Document buildDocument(const ReadPage& page, const IsWord& isWord)
{
    Document document;
    document.language = page.language;
    const double bodySize = bodyEm(page);
    if (bodySize <= 0)
        return document;
    const PageScale scale(page, bodySize);
    const Box text = textBox(page);
    setPaper(document, page, scale, text);
    const Area all{text.left, text.right};
    for (const ReadBlock& block : page.blocks) {
        if (block.empty())
            continue;
        BlockBuilder builder(block, scale, bodySize, isWord);
        builder.widenTo(all);
        std::vector<Paragraph> paragraphs = builder.build();
        if (!document.paragraphs.empty())
            paragraphs.front().spaceBefore = scale.twips(bodySize);
        document.paragraphs.insert(document.paragraphs.end(), paragraphs.begin(), paragraphs.end());
    }
    return document;
}

} // namespace mirvak

#include "RtfWriter.h"

#include "Unicode.h"

#include <cstdint>

namespace mirvak {

namespace {

// Fonts: 0 for letters, 1 for ideographs. The second name is used where the first is not installed.
const char* const fontTable =
    "{\\fonttbl{\\f0\\froman\\fcharset0{\\*\\falt Liberation Serif}Times New Roman;}"
    "{\\f1\\fnil\\fcharset134{\\*\\falt Noto Serif CJK SC}SimSun;}}\n";
const char* const styles =
    "{\\stylesheet{\\s0\\snext0 Normal;}{\\s1\\sbasedon0\\snext0\\outlinelevel0\\b heading 1;}"
    "{\\s2\\sbasedon0\\snext0\\outlinelevel1\\b heading 2;}}\n";

// The first colour marks words. One of the word processors' own sixteen: they take no other for a highlight.
const char* const colourTable = "{\\colortbl;\\red255\\green255\\blue0;}\n";

int localeOf(const std::string& language)
{
    struct Locale
    {
        const char* model;
        int number;
    };
    static const Locale known[] = {{"eng", 1033},
                                   {"rus", 1049},
                                   {"chi_sim", 2052},
                                   {"chi_tra", 1028},
                                   {"deu", 1031},
                                   {"fra", 1036},
                                   {"spa", 3082},
                                   {"ita", 1040},
                                   {"pol", 1045},
                                   {"ukr", 1058},
                                   {"jpn", 1041}};
    for (const Locale& locale : known) {
        if (language == locale.model)
            return locale.number;
    }
    return 1024; // none
}

class Writer
{
public:
    explicit Writer(Unsure unsure) : unsure_(unsure) {}

    std::string write(const Document& document)
    {
        const int locale = localeOf(document.language);
        out_ = "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0";
        word("deflang", locale);
        word("deflangfe", locale == 1028 || locale == 1041 ? locale : 2052);
        out_ += '\n';
        out_ += fontTable;
        if (unsure_ == Unsure::highlighted)
            out_ += colourTable;
        out_ += styles;
        page(document);
        for (const Paragraph& paragraph : document.paragraphs)
            write(paragraph);
        out_ += "}\n";
        return std::move(out_);
    }

private:
    void word(const char* name, int value) { out_ += '\\' + std::string(name) + std::to_string(value); }

    void wordUnlessZero(const char* name, int value)
    {
        if (value != 0)
            word(name, value);
    }

    void page(const Document& document)
    {
        word("paperw", document.paperWidth);
        word("paperh", document.paperHeight);
        word("margl", document.marginLeft);
        word("margt", document.marginTop);
        word("margr", document.marginRight);
        word("margb", document.marginBottom);
        if (document.paperWidth > document.paperHeight)
            out_ += "\\landscape";
        out_ += "\\widowctrl\n";
    }

    void write(const Paragraph& paragraph)
    {
        out_ += "\\pard\\plain";
        wordUnlessZero("s", paragraph.headingLevel);
        if (paragraph.headingLevel > 0) {
            word("outlinelevel", paragraph.headingLevel - 1);
            out_ += "\\keepn";
        }
        out_ += alignmentWord(paragraph.alignment);
        wordUnlessZero("li", paragraph.leftIndent);
        wordUnlessZero("fi", paragraph.firstIndent);
        wordUnlessZero("sb", paragraph.spaceBefore);
        for (const TabStop& stop : paragraph.tabs) {
            if (stop.right)
                out_ += "\\tqr";
            word("tx", stop.position);
        }
        out_ += "\\f0\\loch\\af0\\hich\\af0\\dbch\\af1";
        if (paragraph.headingLevel > 0)
            out_ += "\\b";
        word("fs", paragraph.halfPoints);
        out_ += ' ';
        text(paragraph);
        out_ += "\\par\n";
    }

    static const char* alignmentWord(Alignment alignment)
    {
        switch (alignment) {
        case Alignment::centre:
            return "\\qc";
        case Alignment::right:
            return "\\qr";
        case Alignment::justified:
            return "\\qj";
        case Alignment::left:
            break;
        }
        return "\\ql";
    }

    void text(const Paragraph& paragraph)
    {
        bool ideographs = false;
        auto span = paragraph.unsure.begin();
        const auto end = unsure_ == Unsure::highlighted ? paragraph.unsure.end() : span;
        for (size_t i = 0; i < paragraph.text.size(); ++i) {
            if (span != end && i == span->to) {
                out_ += "\\highlight0 ";
                ++span;
            }
            if (span != end && i == span->from)
                out_ += "\\highlight1 ";
            const char32_t c = paragraph.text[i];
            // A space stays in the font of what stands before it.
            if (c != U' ' && c != U'\t' && isIdeographic(c) != ideographs) {
                ideographs = !ideographs;
                out_ += ideographs ? "\\f1 " : "\\f0 ";
            }
            character(c);
        }
        // A paragraph's end has the look of its last letter: the highlight would go on to the margin.
        if (span != end)
            out_ += "\\highlight0 ";
    }

    void character(char32_t c)
    {
        if (c == U'\t') {
            out_ += "\\tab ";
        } else if (c == U'\\' || c == U'{' || c == U'}') {
            out_ += '\\';
            out_ += static_cast<char>(c);
        } else if (c >= 0x20 && c < 0x7f) {
            out_ += static_cast<char>(c);
        } else if (c >= 0x10000) {
            unit(0xd800 + ((c - 0x10000) >> 10));
            unit(0xdc00 + ((c - 0x10000) & 0x3ff));
        } else if (c >= 0xa0) {
            unit(c);
        } // control characters have no place in a text
    }

    // Units are signed 16-bit numbers in this format; the question mark is for readers without Unicode.
    void unit(char32_t c)
    {
        word("u", static_cast<std::int16_t>(static_cast<std::uint16_t>(c)));
        out_ += '?';
    }

    Unsure unsure_;
    std::string out_;
};

} // namespace

std::string toRtf(const Document& document, Unsure unsure)
{
    return Writer(unsure).write(document);
}

} // namespace mirvak

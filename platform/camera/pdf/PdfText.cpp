#include "PdfText.h"

#include "InvisibleFont.h"
#include "PdfGlyphs.h"
#include "PdfRuns.h"

#define POINTERHOLDER_TRANSITION 4 // the library's old smart pointer stays away
#include <qpdf/QUtil.hh>

#include <cmath>

namespace mirvak {

namespace {

constexpr double smallest = 0.01; // points: what is no larger has no direction
constexpr int placeDigits = 2, matrixDigits = 4;
constexpr double largest = 32000; // of a number in a PDF that all readers know; nothing lies there

bool isSmall(const cv::Point2d& place)
{
    return std::abs(place.x) < largest && std::abs(place.y) < largest;
}

/// Whether it can be shown. Written so that what is no number says no.
bool isSound(const PdfRun& run)
{
    return isSmall(run.start) && isSmall(run.start + run.along) && isSmall(run.upward) &&
           cv::norm(run.along) > smallest && cv::norm(run.upward) > smallest;
}

std::string numberOf(double value, int digits)
{
    const std::string text = QUtil::double_to_string(value, digits);
    return (text == "-0" ? "0" : text) + ' ';
}

class Writer
{
public:
    explicit Writer(PdfGlyphs& glyphs) : glyphs_(glyphs) {}

    void add(const PdfWord& word, const PdfRun& run)
    {
        const PdfGlyphs::Codes codes = glyphs_.codesOf(word.text);
        if (codes.ems <= 0 || !isSound(run))
            return;
        setSize(cv::norm(run.upward));
        place(run, codes.ems);
        text_ += '<' + codes.hex;
        if (word.isSpaceBehind)
            text_ += glyphs_.codesOf(" ").hex;
        text_ += "> Tj\n";
    }
    std::string text() const { return text_.empty() ? text_ : "BT 3 Tr\n" + text_ + "ET\n"; }

private:
    void setSize(double size)
    {
        const std::string wanted = "/Text " + numberOf(size, placeDigits) + "Tf\n";
        if (wanted != font_)
            text_ += wanted;
        font_ = wanted;
        size_ = std::stod(QUtil::double_to_string(size, placeDigits)); // as the reader will know it
    }

    void place(const PdfRun& run, double ems)
    {
        const cv::Point2d across = run.along / (ems * size_), up = run.upward / size_;
        const cv::Point2d base =
            run.start + run.upward * (-invisibleFont::descent / invisibleFont::unitsPerEm);
        for (const double part : {across.x, across.y, up.x, up.y})
            text_ += numberOf(part, matrixDigits);
        text_ += numberOf(base.x, placeDigits) + numberOf(base.y, placeDigits) + "Tm ";
    }

    PdfGlyphs& glyphs_;
    std::string text_, font_;
    double size_ = 1;
};

} // namespace

std::string invisibleText(const PdfWords& words, PdfGlyphs& glyphs, const cv::Matx23d& toSheet)
{
    const std::vector<PdfRun> runs = runsOf(words, toSheet);
    Writer writer(glyphs);
    for (size_t i = 0; i < words.size(); ++i)
        writer.add(words[i], runs[i]);
    return writer.text();
}

} // namespace mirvak

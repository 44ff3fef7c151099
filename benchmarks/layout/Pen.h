#pragma once

#include "Sheet.h"
#include "Words.h"

#include <QRectF>
#include <QStringList>

#include <vector>

/// Where running text is set; mm.
struct Column
{
    double left, right, top, bottom;
    std::vector<QRectF> obstacles = {}; ///< pictures that the lines leave room for
};

/// Draws a page and notes what stands on it, in the order in which it is drawn: that of reading.
class Pen
{
public:
    Pen(deskpictures::Sheet& sheet, Words& words) : sheet_(sheet), words_(words) {}

    deskpictures::Sheet& sheet() { return sheet_; }
    Words& words() { return words_; }
    /// The ways in which a person may read the page: each group of what stands beside the text in its place,
    /// last or first.
    QStringList readings() const;

    deskpictures::TextStyle body(double points) const;
    deskpictures::TextStyle bold(double points) const;
    deskpictures::TextStyle italic(double points) const; ///< of ideographs there is none
    deskpictures::TextStyle light(double points) const;  ///< captions, running heads

    void line(double xMm, double baselineMm, const QString& words, const deskpictures::TextStyle& style);
    /// Cells of one row of a table.
    void row(double baselineMm,
             const std::vector<double>& lefts,
             const QStringList& cells,
             const deskpictures::TextStyle& style);
    /// Paragraphs from the top of the column to its bottom. @return below the last line, mm
    double fill(const Column& column, const deskpictures::TextStyle& style, int sentencesEach = 3);
    /// One paragraph. @return below its last line, mm
    double paragraph(const Column& column, const QString& words, const deskpictures::TextStyle& style);
    /// One paragraph that begins with a letter as high as two lines. @return below its last line, mm
    double opening(const Column& column, const QString& words, const deskpictures::TextStyle& style);
    /// What looks like a photograph, or the screen of a printed one; it has no text.
    void picture(const QRectF& mm);
    /// Notes text that is drawn by other means.
    void note(const QString& words);
    static constexpr int foot = -1; ///< is read last in any case
    /// Of what stands beside the text what follows is; 0: the text itself.
    void setAside(int group) { aside_ = group; }

private:
    enum class Turn { inPlace, last, first };
    QString reading(const std::vector<Turn>& turns) const;
    QStringList broken(const QString& words) const;

    deskpictures::Sheet& sheet_;
    Words& words_;
    struct Noted
    {
        QString words;
        int aside;
    };
    std::vector<Noted> noted_;
    int aside_ = 0;
    QString begun_; ///< the large letter of a paragraph's first word
};

#include "Layouts.h"
#include "Pen.h"

#include <algorithm>

using deskpictures::TextStyle;

namespace {

TextStyle justified(TextStyle style)
{
    style.align = Qt::AlignJustify;
    return style;
}

TextStyle centred(TextStyle style)
{
    style.align = Qt::AlignHCenter;
    return style;
}

double between(Pen& pen, double low, double high)
{
    return low + (high - low) * pen.words().any().generateDouble();
}

void runningHead(Pen& pen)
{
    const QString number = QString::number(pen.words().any().bounded(12, 300));
    const QString title = pen.words().headline();
    pen.sheet().text(20, 14, number, pen.light(8.5));
    TextStyle style = pen.light(8.5);
    style.align = Qt::AlignRight;
    pen.sheet().text(190, 14, title, style);
    pen.note(number + QLatin1Char(' ') + title);
}

/// Columns of one width, filled after each other.
void columns(
    Pen& pen, int count, const Column& area, double gutter, const TextStyle& style, bool separated = false)
{
    const double width = (area.right - area.left - gutter * (count - 1)) / count;
    for (int i = 0; i < count; ++i) {
        Column column = area;
        column.left = area.left + i * (width + gutter);
        column.right = column.left + width;
        pen.fill(column, style);
        const double middle = column.right + gutter / 2;
        if (separated && i + 1 < count)
            pen.sheet().rule(middle, area.top, middle, area.bottom, 0.2, style.ink);
    }
}

double caption(Pen& pen, double left, double right, double top)
{
    return pen.paragraph({left, right, top, top + 12}, pen.words().sentences(1), pen.light(7.5));
}

} // namespace

void layout::twoColumnsAroundPicture(Pen& pen)
{
    pen.line(105, 28, pen.words().headline(), centred(pen.bold(24)));
    const double top = between(pen, 70, 150), width = between(pen, 50, 90);
    const QRectF picture(105 - width / 2, top, width, between(pen, 40, 70));
    columns(pen, 2, {20, 190, 36, 272, {picture}}, between(pen, 4.5, 7), justified(pen.body(10)));
    pen.picture(picture);
    pen.line(105, 284, QString::number(pen.words().any().bounded(10, 99)), centred(pen.body(9)));
}

void layout::twoColumnsNarrowGutter(Pen& pen)
{
    pen.line(20, 24, pen.words().headline(), pen.bold(17));
    const double foot = between(pen, 90, 140), gutter = between(pen, 3.2, 4.5);
    const double middle = 105 - gutter / 2;
    const TextStyle style = pen.words().any().bounded(2) ? justified(pen.body(9.5)) : pen.body(9.5);
    pen.fill({18, middle, 32, 275}, style);
    const double y = caption(pen, middle + gutter, 192, foot + 2) + 4;
    pen.picture({middle + gutter, 34, 192 - middle - gutter, foot - 34});
    pen.fill({middle + gutter, 192, y, 275}, style);
}

void layout::twoColumnsFootnotes(Pen& pen)
{
    const TextStyle style = justified(pen.body(10));
    pen.line(105, 25, pen.words().headline(), centred(pen.bold(18)));
    pen.line(105, 33, pen.words().person(), centred(pen.body(11)));
    const double abstract = pen.paragraph({38, 172, 38, 70}, pen.words().sentences(3), pen.body(9));
    const double left = 20, right = 190, gutter = 6, middle = 105;
    double y = abstract + 6;
    // Between the paragraphs stand headings of their own.
    double at = y;
    for (const bool second : {false, true}) {
        const double from = second ? middle + gutter / 2 : left, to = second ? right : middle - gutter / 2;
        at = y;
        while (at < 235) {
            pen.line(from, at + 4, pen.words().headline(), pen.bold(10.5));
            at = pen.paragraph({from, to, at + 6, 255}, pen.words().sentences(5), style) + 2;
        }
        pen.sheet().rule(from, 259, from + 25, 259, 0.2, style.ink);
        pen.paragraph({from, to, 261, 280}, QStringLiteral("1 ") + pen.words().sentences(1), pen.body(7.5));
    }
}

void layout::threeColumns(Pen& pen)
{
    pen.line(20, 30, pen.words().headline(), pen.bold(26));
    const bool separated = pen.words().any().bounded(2) == 0;
    columns(
        pen, 3, {18, 192, 38, 278}, separated ? 5 : between(pen, 3.8, 6), justified(pen.body(9)), separated);
}

void layout::newspaper(Pen& pen)
{
    pen.line(105, 26, pen.words().company(), centred(pen.bold(34)));
    pen.sheet().rule(14, 30, 196, 30, 0.5, QColor(30, 28, 28));
    pen.line(105, 35, pen.words().date(), centred(pen.body(9)));
    pen.sheet().rule(14, 37, 196, 37, 0.3, QColor(30, 28, 28));
    const double half = between(pen, 130, 170);
    pen.line(14, 49, pen.words().headline(), pen.bold(24));
    columns(pen, 4, {14, 196, 54, half}, 4, justified(pen.body(8)));
    pen.sheet().rule(14, half + 3, 196, half + 3, 0.3, QColor(30, 28, 28));
    // Two articles beside each other below, each with a headline of its own.
    pen.line(14, half + 11, pen.words().headline(), pen.bold(14));
    columns(pen, 2, {14, 103, half + 15, 280}, 4, justified(pen.body(8)));
    pen.line(107, half + 11, pen.words().headline(), pen.bold(14));
    columns(pen, 2, {107, 196, half + 15, 280}, 4, justified(pen.body(8)));
}

void layout::magazine(Pen& pen)
{
    runningHead(pen);
    // A picture over two of three columns with its caption, as a magazine sets it.
    const double gutter = 5, width = (174 - 2 * gutter) / 3, top = between(pen, 90, 130);
    const TextStyle style = justified(pen.body(9.5));
    const double second = 18 + width + gutter, third = second + width + gutter;
    pen.fill({18, 18 + width, 24, 275}, style);
    pen.picture({second, 24, 192 - second, top - 24});
    const double below = caption(pen, second, 192, top + 2) + 4;
    pen.fill({second, second + width, below, 275}, style);
    pen.fill({third, 192, below, 275}, style);
}

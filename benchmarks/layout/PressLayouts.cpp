// Pages out of magazines and paperbacks.
#include "Layouts.h"
#include "Pen.h"

#include <QPainter>

using deskpictures::TextStyle;
using deskpictures::Typeface;

namespace {

const QColor black(30, 28, 28);

TextStyle aligned(TextStyle style, Qt::Alignment align)
{
    style.align = align;
    return style;
}

double between(Pen& pen, double low, double high)
{
    return low + (high - low) * pen.words().any().generateDouble();
}

QColor accent(Pen& pen)
{
    const QColor colours[] = {{168, 28, 36}, {20, 84, 130}, {40, 100, 60}};
    return colours[pen.words().any().bounded(3)];
}

void runningFoot(Pen& pen)
{
    const QString number = QString::number(pen.words().any().bounded(12, 140));
    const QString title = pen.words().company(), date = pen.words().date();
    pen.sheet().rule(18, 281, 192, 281, 0.2, black);
    pen.setAside(Pen::foot);
    pen.row(286, {18, 28, 150}, {number, title, date}, pen.light(8));
    pen.setAside(0);
}

/// Set large between two rules, in a colour; not part of the text. @return its place, with white around it
QRectF pullQuote(Pen& pen, double left, double right, double top, int group)
{
    TextStyle style = pen.bold(15);
    style.ink = accent(pen);
    style.leading = 1.35;
    pen.setAside(group);
    pen.sheet().rule(left, top + 4, right, top + 4, 0.5, style.ink);
    const double end = pen.paragraph({left, right, top + 6, top + 60}, pen.words().quote(), style) + 2;
    pen.sheet().rule(left, end, right, end, 0.5, style.ink);
    pen.setAside(0);
    return {left, top, right - left, end + 4 - top};
}

/// Some paragraphs on a tint, with a heading of their own.
void tintedBox(Pen& pen, const QRectF& mm, int group)
{
    const QColor tints[] = {{232, 238, 220}, {226, 236, 246}, {250, 236, 208}};
    pen.sheet().box(mm, tints[pen.words().any().bounded(3)]);
    pen.setAside(group);
    TextStyle head = pen.light(11);
    if (pen.words().tongue() != Tongue::chinese)
        head.typeface = Typeface::SansBold;
    pen.line(mm.left() + 4, mm.top() + 7, pen.words().headline(), head);
    pen.fill({mm.left() + 4, mm.right() - 4, mm.top() + 11, mm.bottom() - 3}, pen.light(8.5), 2);
    pen.setAside(0);
}

void photograph(Pen& pen, const QRectF& mm, int group)
{
    pen.picture(mm);
    pen.setAside(group);
    const double top = mm.bottom() + 1;
    pen.paragraph({mm.left(), mm.right(), top, top + 9}, pen.words().sentences(1), pen.italic(8));
    pen.setAside(0);
}

} // namespace

// Three columns, a quotation set large in the middle one, a picture across the second and third.
void layout::feature(Pen& pen)
{
    const TextStyle body = aligned(pen.body(9.5), Qt::AlignJustify);
    const double gutter = between(pen, 4.5, 6), width = (174 - 2 * gutter) / 3;
    const double second = 18 + width + gutter, third = second + width + gutter;
    const double foot = between(pen, 195, 215);
    pen.line(18, 32, pen.words().headline(), pen.bold(26));
    pen.paragraph({18, 192, 36, 50}, pen.words().sentences(1), pen.italic(13));
    const double y = pen.opening({18, 18 + width, 56, 276}, pen.words().sentences(3), body);
    pen.fill({18, 18 + width, y, 276}, body);
    const double quote = between(pen, 90, 120);
    pen.fill({second, second + width, 56, quote}, body);
    const QRectF place = pullQuote(pen, second, second + width, quote, 1);
    pen.fill({second, second + width, place.bottom(), foot}, body);
    photograph(pen, {second, foot + 3, 192 - second, 264 - foot}, 2);
    pen.fill({third, 192, 56, foot}, body);
    runningFoot(pen);
}

// Two columns around a picture that stands in both, and a coloured box below the second.
void layout::boxed(Pen& pen)
{
    const TextStyle body = aligned(pen.body(10), Qt::AlignJustify);
    const double gutter = between(pen, 5, 7), middle = 105 - gutter / 2, right = 105 + gutter / 2;
    const double wide = between(pen, 56, 80), top = between(pen, 95, 125);
    const QRectF picture(105 - wide / 2, top, wide, between(pen, 38, 50));
    QRectF around = picture;
    around.setBottom(picture.bottom() + 10);
    const double box = between(pen, 205, 225);
    pen.line(105, 30, pen.words().headline(), aligned(pen.bold(28), Qt::AlignHCenter));
    pen.line(105, 38, pen.words().person(), aligned(pen.italic(11), Qt::AlignHCenter));
    const double y = pen.opening({18, middle, 48, 276, {around}}, pen.words().sentences(3), body);
    pen.fill({18, middle, y, 276, {around}}, body);
    pen.fill({right, 192, 48, box - 3, {around}}, body);
    photograph(pen, picture, 1);
    tintedBox(pen, {right, box, 192 - right, 275 - box}, 2);
    runningFoot(pen);
}

// Thin paper, small print and hardly a margin: the lines of the other side shine through.
void layout::paperback(Pen& pen)
{
    const bool chinese = pen.words().tongue() == Tongue::chinese;
    TextStyle body = aligned(pen.body(chinese ? 8.5 : 9.5), Qt::AlignJustify);
    if (!chinese)
        body.typeface = Typeface::Book;
    body.leading = chinese ? 1.5 : 1.18;
    QPainter& painter = pen.sheet().painter();
    pen.sheet().box({0, 0, 111, 178}, QColor(243, 236, 220));
    painter.save();
    painter.translate(pen.sheet().px(111, 0));
    painter.scale(-1, 1);
    TextStyle behind = body;
    behind.ink = QColor(226, 217, 200);
    for (double top = between(pen, 16, 20); top < 158;)
        top = pen.sheet().paragraph(9, top, 93, pen.words().sentences(4), behind, nullptr, 167);
    painter.restore();
    pen.line(55.5, 11, pen.words().headline(), aligned(pen.italic(8.5), Qt::AlignHCenter));
    pen.fill({9, 102, 16, 167}, body, 4);
    pen.line(55.5, 173, QString::number(pen.words().any().bounded(20, 400)), aligned(body, Qt::AlignHCenter));
}

#include "Layouts.h"
#include "Pen.h"
#include "pages/Seal.h"

#include <QPainter>

using deskpictures::TextStyle;
using deskpictures::Typeface;

namespace {

TextStyle aligned(TextStyle style, Qt::Alignment align)
{
    style.align = align;
    return style;
}

double between(Pen& pen, double low, double high)
{
    return low + (high - low) * pen.words().any().generateDouble();
}

deskpictures::Seal sealFor(Pen& pen, bool star)
{
    const bool chinese = pen.words().tongue() == Tongue::chinese;
    return {between(pen, 17, 22),
            star ? QColor(206, 32, 38) : QColor(38, 66, 176),
            pen.words().company().toUpper(),
            star ? QString() : pen.words().town().toUpper().left(6),
            chinese ? Typeface::ChineseBold : Typeface::SansBold,
            chinese ? 15.0 : 11.0,
            between(pen, 200, 260),
            star};
}

const QColor black(30, 28, 28);

} // namespace

void layout::plainText(Pen& pen)
{
    pen.line(25, 30, pen.words().headline(), pen.bold(18));
    pen.fill({25, 185, 38, 265}, aligned(pen.body(11.5), Qt::AlignJustify));
    pen.line(105,
             280,
             QString::number(pen.words().any().bounded(10, 99)),
             aligned(pen.body(10), Qt::AlignHCenter));
}

void layout::oldTyped(Pen& pen)
{
    // Letters that strike high, low, heavy and faint; typewriters have one width.
    QRandomGenerator& any = pen.words().any();
    TextStyle style = pen.body(11);
    if (pen.words().tongue() != Tongue::chinese)
        style.typeface = Typeface::Mono;
    double y = 35;
    QString line;
    const int length = pen.words().tongue() == Tongue::chinese ? 34 : 66;
    const auto strike = [&] {
        double x = 25;
        for (const QChar c : line) {
            style.ink = QColor::fromHsv(240, 20, any.bounded(20, 110));
            pen.sheet().text(x + between(pen, -0.12, 0.12), y + between(pen, -0.15, 0.15), QString(c), style);
            x += pen.sheet().textWidthMm(QString(c), style);
        }
        pen.note(line);
        line.clear();
        y += 7;
    };
    while (y < 265) {
        const QString text = pen.words().sentences(4);
        const QStringList words = pen.words().tongue() == Tongue::chinese
                                      ? text.split(QString(), Qt::SkipEmptyParts)
                                      : text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const QString space = pen.words().tongue() == Tongue::chinese ? QString() : QStringLiteral(" ");
        for (const QString& word : words) {
            if (line.size() + word.size() + 1 > length)
                strike();
            line += (line.isEmpty() ? QString() : space) + word;
        }
        strike();
        y += 4;
    }
}

void layout::sideNotes(Pen& pen)
{
    // Each note stands beside its paragraph, after which it is read.
    double y = 30;
    while (y < 240) {
        const double end = pen.paragraph(
            {58, 190, y, 275}, pen.words().sentences(6), aligned(pen.body(11), Qt::AlignJustify));
        pen.setAside(1);
        pen.paragraph({18, 50, y + 2, end}, pen.words().headline(), pen.light(8));
        pen.setAside(0);
        y = end + 5;
    }
}

void layout::captions(Pen& pen)
{
    pen.line(20, 15, pen.words().headline(), pen.light(9));
    double y = 24;
    for (int i = 0; i < 2; ++i) {
        y = pen.fill({20, 190, y, y + 55}, aligned(pen.body(11), Qt::AlignJustify)) + 4;
        const double left = between(pen, 30, 70);
        pen.picture({left, y, 80, 48});
        pen.line(left + 40, y + 53, pen.words().thing(), aligned(pen.light(8.5), Qt::AlignHCenter));
        y += 60;
    }
    pen.fill({20, 190, y, 272}, aligned(pen.body(11), Qt::AlignJustify));
}

void layout::table(Pen& pen)
{
    double y = pen.fill({22, 188, 25, 75}, pen.body(11)) + 12;
    const bool ruled = pen.words().any().bounded(2) == 0;
    const std::vector<double> lefts{24, 80, 118, 145, 170};
    const double top = y - 7;
    const int rows = pen.words().any().bounded(9, 18);
    for (int i = 0; i < rows; ++i, y += 7.5) {
        pen.row(y,
                lefts,
                {pen.words().thing(),
                 pen.words().town(),
                 QString::number(pen.words().any().bounded(1, 300)),
                 pen.words().amount(),
                 pen.words().amount()},
                pen.body(10));
        if (ruled)
            pen.sheet().rule(22, y + 2.2, 188, y + 2.2, 0.25, black);
    }
    if (ruled) {
        for (const double x : {22.0, 77.0, 115.0, 142.0, 167.0, 188.0})
            pen.sheet().rule(x, top + 1.7, x, y - 5.3, 0.25, black);
    }
    pen.fill({22, 188, y + 8, 270}, pen.body(11));
}

void layout::receipt(Pen& pen)
{
    TextStyle style = pen.light(9);
    pen.line(40, 14, pen.words().company(), aligned(pen.bold(12), Qt::AlignHCenter));
    pen.line(40, 20, pen.words().street(), aligned(style, Qt::AlignHCenter));
    pen.line(6, 30, pen.words().date(), style);
    double y = 40;
    for (int i = 0; i < 14; ++i, y += 6) {
        const QString what = pen.words().thing(), amount = pen.words().amount();
        pen.sheet().text(6, y, what, style);
        pen.sheet().text(74, y, amount, aligned(style, Qt::AlignRight));
        pen.note(what + QLatin1Char(' ') + amount);
    }
    pen.sheet().rule(6, y - 3, 74, y - 3, 0.3, black);
    const QString total = pen.words().amount();
    pen.sheet().text(6, y + 4, pen.words().label(0), pen.bold(11));
    pen.sheet().text(74, y + 4, total, aligned(pen.bold(11), Qt::AlignRight));
    pen.note(pen.words().label(0) + QLatin1Char(' ') + total);
    pen.paragraph({6, 74, y + 12, y + 35}, pen.words().sentences(1), style);
}

void layout::form(Pen& pen)
{
    pen.line(105, 28, pen.words().headline(), aligned(pen.bold(17), Qt::AlignHCenter));
    double y = 46;
    for (int i = 0; i < 8; i += 2, y += 14) { // two entries beside each other in a row
        QStringList row;
        for (int j = 0; j < 2; ++j) {
            const double x = j == 0 ? 20 : 110;
            const QString value = i == 0   ? pen.words().person()
                                  : i == 2 ? pen.words().town()
                                           : pen.words().date();
            pen.sheet().text(x, y, pen.words().label(i + j), pen.light(9));
            pen.sheet().text(x + 32, y, value, pen.body(11));
            pen.sheet().rule(x + 30, y + 1.5, x + 80, y + 1.5, 0.25, black);
            row << pen.words().label(i + j) << value;
        }
        pen.note(row.join(QLatin1Char(' ')));
    }
    y = pen.fill({20, 190, y, y + 60}, pen.body(10.5)) + 14;
    pen.line(20, y, pen.words().date(), pen.body(11));
    pen.sheet().rule(110, y + 1, 185, y + 1, 0.25, black);
    pen.line(110, y + 6, pen.words().label(7), pen.light(8));
}

void layout::letter(Pen& pen)
{
    const TextStyle style = pen.body(11);
    // Two addresses beside each other: the one is read to its end before the other begins.
    for (const double x : {22.0, 120.0}) {
        pen.line(x, 30, pen.words().company(), pen.bold(11));
        pen.line(x, 36, pen.words().person(), style);
        pen.line(x, 42, pen.words().street(), style);
        pen.line(x, 48, pen.words().town(), style);
    }
    pen.line(188, 68, pen.words().date(), aligned(style, Qt::AlignRight));
    pen.line(22, 84, pen.words().headline(), pen.bold(12));
    const double y = pen.fill({22, 188, 92, 230}, style) + 14;
    pen.line(22, y, pen.words().person(), style);
}

void layout::sideways(Pen& pen)
{
    pen.line(20, 28, pen.words().headline(), pen.bold(18));
    pen.fill({20, 172, 36, 270}, aligned(pen.body(11.5), Qt::AlignJustify));
    QPainter& painter = pen.sheet().painter();
    painter.save();
    painter.translate(pen.sheet().px(190, 60));
    painter.rotate(90);
    pen.setAside(1);
    pen.line(0, 0, pen.words().sentences(1).left(90), pen.body(11));
    pen.setAside(0);
    painter.restore();
}

void layout::official(Pen& pen)
{
    const QColor red(206, 32, 38);
    TextStyle head = aligned(pen.bold(30), Qt::AlignHCenter);
    head.ink = red;
    pen.line(105, 42, pen.words().company(), head);
    pen.sheet().rule(25, 60, 185, 60, 0.6, red);
    pen.line(105, 56, pen.words().date(), aligned(pen.body(12), Qt::AlignHCenter));
    pen.line(105, 78, pen.words().headline(), aligned(pen.bold(20), Qt::AlignHCenter));
    TextStyle style = pen.body(14);
    style.leading = 1.9;
    const double y = pen.fill({28, 182, 88, between(pen, 150, 210)}, style) + 22;
    pen.line(178, y, pen.words().company(), aligned(style, Qt::AlignRight));
    pen.line(178, y + 11, pen.words().date(), aligned(style, Qt::AlignRight));
    deskpictures::press(
        pen.sheet(), sealFor(pen, true), 155 + between(pen, -6, 6), y + 4, between(pen, -15, 15));
}

void layout::stamped(Pen& pen)
{
    pen.line(22, 30, pen.words().headline(), pen.bold(16));
    const double y = pen.fill({22, 188, 40, between(pen, 130, 200)}, pen.body(12)) + 14;
    pen.line(22, y, pen.words().person(), pen.body(12));
    pen.line(22, y + 8, pen.words().date(), pen.body(12));
    pen.fill({22, 188, y + 16, y + 40}, pen.body(12));
    deskpictures::press(pen.sheet(),
                        sealFor(pen, false),
                        between(pen, 40, 60),
                        y + between(pen, -8, 8),
                        between(pen, -25, 25));
    // One beside the text, with letters of its own.
    deskpictures::press(pen.sheet(), sealFor(pen, true), 160, y + 4, between(pen, -25, 25));
}

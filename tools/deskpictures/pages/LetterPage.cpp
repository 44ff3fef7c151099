#include "Pages.h"

#include <QPainterPath>

namespace deskpictures {
namespace {

const QColor houseGreen(28, 84, 74);
const QColor houseGold(186, 140, 62);
constexpr double leftMm = 28;
constexpr double rightMm = 182;

// The house mark: a quill in a ring.
void drawMark(Sheet& sheet, double xMm, double yMm, double radiusMm)
{
    QPainter& p = sheet.painter();
    p.save();
    p.translate(sheet.px(xMm, yMm));
    const double r = sheet.px(radiusMm);
    p.scale(r, r);
    p.setPen(Qt::NoPen);
    p.setBrush(houseGreen);
    p.drawEllipse(QPointF(0, 0), 1, 1);
    p.setPen(QPen(houseGold, 0.05));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(0, 0), 0.88, 0.88);
    QPainterPath quill(QPointF(-0.48, 0.62));
    quill.cubicTo({-0.35, 0.1}, {0.0, -0.55}, {0.56, -0.62});
    quill.cubicTo({0.62, -0.2}, {0.2, 0.38}, {-0.3, 0.36});
    quill.closeSubpath();
    p.fillPath(quill, QColor(250, 246, 235));
    p.setPen(QPen(houseGreen, 0.045, Qt::SolidLine, Qt::RoundCap));
    QPainterPath shaft(QPointF(-0.36, 0.5));
    shaft.cubicTo({-0.2, 0.1}, {0.1, -0.3}, {0.5, -0.56});
    p.drawPath(shaft);
    p.drawLine(QPointF(0.05, -0.12), QPointF(0.34, -0.1));
    p.drawLine(QPointF(-0.12, 0.1), QPointF(0.12, 0.16));
    p.restore();
}

// A name written with a broad blue pen: one stroke drawn thrice, a little apart, gives the pen its width.
void drawSignature(Sheet& sheet, double xMm, double yMm)
{
    QPainterPath name(QPointF(2, -9));
    name.cubicTo({12, -14}, {24, -13}, {27, -11.5});
    name.moveTo(15, -12.5);
    name.cubicTo({12, -6}, {9, 0}, {6, 1.2});
    name.cubicTo({3, 2.4}, {3.5, -1.5}, {8, -1.6});
    name.cubicTo({13, -1.6}, {14, -6}, {15.8, -8.6});
    name.cubicTo({17, -10}, {14.6, -1}, {15.2, -0.6});
    name.cubicTo({16.5, -3.6}, {19, -4.6}, {18.6, -2.6});
    name.cubicTo({18.3, -0.5}, {18.4, 0.4}, {20.4, -1.4});
    name.cubicTo({23, -4.2}, {24.6, -3.8}, {22.8, -2.6});
    name.cubicTo({20.8, -1.2}, {21.4, 0.8}, {25, -1.4});
    name.cubicTo({27.5, -4.4}, {30, -3.9}, {28.8, -1.4});
    name.cubicTo({27.4, 1}, {25.4, -0.2}, {28.4, -2.6});
    name.cubicTo({32, -5.6}, {33, -9.6}, {32.4, -10.4});
    name.cubicTo({30.8, -8.4}, {30.6, -1}, {32.4, -0.4});
    name.cubicTo({35, 0.2}, {36.5, -4}, {38.5, -3.6});
    name.cubicTo({41, -3}, {36.6, 0.8}, {37.4, -1.6});
    name.cubicTo({38.6, -4.8}, {43, -3.2}, {45, -2});
    name.cubicTo({50, 0.4}, {58, -3.4}, {64, -6});
    name.moveTo(10, 4.6);
    name.cubicTo({28, 2.4}, {44, 2.2}, {62, 3.2});
    QPainter& p = sheet.painter();
    p.save();
    p.translate(sheet.px(xMm, yMm));
    p.scale(sheet.px(1), sheet.px(1));
    p.setPen(QPen(QColor(28, 45, 128, 190), 0.42, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const double shift : {0.0, 0.1, 0.2})
        p.drawPath(name.translated(shift, -shift));
    p.restore();
}

void drawHead(Sheet& sheet, const QStringList& lines)
{
    drawMark(sheet, leftMm + 10, 30, 10);
    TextStyle house{Typeface::Book, 19, houseGreen};
    house.letterSpacingPt = 1.6;
    sheet.text(leftMm + 25, 29.5, lines.at(0), house);
    sheet.text(leftMm + 25.3, 36.6, lines.at(1), {Typeface::BookItalic, 11.5, houseGold.darker(130)});
    TextStyle address{Typeface::Sans, 8, QColor(70, 76, 74)};
    address.align = Qt::AlignRight;
    sheet.text(rightMm, 36.6, lines.at(2), address);
    sheet.rule(leftMm, 45, rightMm, 45, 0.6, houseGreen);
    sheet.rule(leftMm, 46.1, rightMm, 46.1, 0.2, houseGold);
}

// Where the letter was folded into its envelope: the paper turns towards the light and away from it.
void drawFold(Sheet& sheet, double yMm)
{
    QLinearGradient shade(0, sheet.px(yMm - 7), 0, sheet.px(yMm + 7));
    shade.setColorAt(0, QColor(0, 0, 0, 0));
    shade.setColorAt(0.46, QColor(0, 0, 0, 9));
    shade.setColorAt(0.495, QColor(0, 0, 0, 26));
    shade.setColorAt(0.505, QColor(255, 255, 255, 60));
    shade.setColorAt(0.6, QColor(255, 255, 255, 0));
    sheet.painter().fillRect(sheet.px(QRectF(0, yMm - 7, sheet.widthMm(), 14)), shade);
}

} // namespace

FlatPage drawLetter()
{
    Sheet sheet(210, 297, QColor(251, 249, 243));
    const QStringList lines = pageText(QStringLiteral("letter"));
    drawHead(sheet, lines);
    TextStyle body{Typeface::Book, 11.5};
    body.leading = 1.42;
    TextStyle date = body;
    date.align = Qt::AlignRight;
    sheet.text(rightMm, 60, lines.at(3), date);
    double y = 60;
    for (const QString& line : lines.mid(4, 4)) {
        sheet.text(leftMm, y, line, body);
        y += 5.6;
    }
    TextStyle subject{Typeface::SansBold, 11, houseGreen};
    sheet.text(leftMm, 96, lines.at(8), subject);
    body.align = Qt::AlignJustify;
    y = 103;
    for (const QString& line : lines.mid(9, 4))
        y = sheet.paragraph(leftMm, y, rightMm - leftMm, line, body) + 3;
    body.align = Qt::AlignLeft;
    y = sheet.paragraph(leftMm, y + 2, 90, lines.at(13), body);
    drawSignature(sheet, leftMm + 2, y + 18);
    sheet.text(leftMm, y + 30, lines.at(14), body);
    TextStyle foot{Typeface::BookItalic, 9.5, QColor(90, 90, 86)};
    sheet.rule(leftMm, 272, rightMm, 272, 0.2, houseGold);
    sheet.text(leftMm, 277, lines.at(15), foot);
    drawFold(sheet, 99);
    drawFold(sheet, 198);
    return finish(sheet);
}

} // namespace deskpictures

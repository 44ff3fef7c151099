#include "Pages.h"

#include <array>

namespace deskpictures {
namespace {

const QColor formBlue(32, 62, 118);
const QColor fieldTint(233, 239, 248);
const QColor penBlue(30, 44, 120);
constexpr double leftMm = 20;
constexpr double rightMm = 190;

struct Item
{
    const char* number;
    const char* what;
    int count;
    int pence;
};

constexpr std::array<Item, 8> items = {{
    {"A-1042", "Desk lamp, brass, with green shade", 4, 4850},
    {"A-1107", "Reading stand, beech, adjustable", 12, 2275},
    {"B-0310", "Index cards, ruled, box of 500", 30, 640},
    {"B-0344", "Archive box, acid free, 38 x 26 cm", 60, 515},
    {"C-2201", "Book cradle with felt cover", 6, 3990},
    {"C-2218", "Magnifier, 3x, with oak handle", 8, 1825},
    {"D-0075", "Cotton gloves, pair, size M", 40, 180},
    {"D-0091", "Bone folder, 18 cm", 15, 395},
}};

QString money(int pence)
{
    return QStringLiteral("%1.%2").arg(pence / 100).arg(pence % 100, 2, 10, QLatin1Char('0'));
}

void drawField(Sheet& sheet, QRectF mm, const QString& label, const QString& value)
{
    sheet.box(mm, Qt::white, formBlue, 0.25);
    TextStyle small{Typeface::Sans, 6.5, formBlue};
    sheet.text(mm.left() + 1.4, mm.top() + 3, label, small);
    TextStyle hand{Typeface::SerifItalic, 13, penBlue};
    sheet.text(mm.left() + 3, mm.bottom() - 2, value, hand);
}

void drawTick(Sheet& sheet, double xMm, double yMm, const QString& label, bool ticked)
{
    sheet.box({xMm, yMm, 4, 4}, Qt::white, formBlue, 0.3);
    sheet.text(xMm + 6, yMm + 3.2, label, {Typeface::Sans, 9});
    if (!ticked)
        return;
    QPainter& p = sheet.painter();
    p.setPen(QPen(penBlue, sheet.px(0.55), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF mark[] = {
        sheet.px(xMm + 0.5, yMm + 1.8), sheet.px(xMm + 1.7, yMm + 3.5), sheet.px(xMm + 5, yMm - 1.4)};
    p.drawPolyline(mark, 3);
}

void drawHead(Sheet& sheet)
{
    sheet.box({leftMm, 16, rightMm - leftMm, 17}, formBlue);
    TextStyle title{Typeface::SansBold, 18, Qt::white};
    sheet.text(leftMm + 5, 27, QStringLiteral("Request for supplies"), title);
    TextStyle number{Typeface::Sans, 10, Qt::white};
    number.align = Qt::AlignRight;
    sheet.text(rightMm - 5, 23, QStringLiteral("Form 27-B"), number);
    sheet.text(rightMm - 5, 28.5, QStringLiteral("No. 004 318"), number);
    drawField(
        sheet, {leftMm, 37, 85, 12}, QStringLiteral("Name of applicant"), QStringLiteral("Barnaby Whitlock"));
    drawField(sheet, {leftMm + 85, 37, 45, 12}, QStringLiteral("Department"), QStringLiteral("Map Room"));
    drawField(sheet, {leftMm + 130, 37, 40, 12}, QStringLiteral("Date"), QStringLiteral("17 October 2024"));
    drawField(sheet,
              {leftMm, 49, 120, 12},
              QStringLiteral("Deliver to"),
              QStringLiteral("Town Library, east wing, 2nd floor"));
    drawField(sheet, {leftMm + 120, 49, 50, 12}, QStringLiteral("Telephone"), QStringLiteral("0555 018 264"));
    drawTick(sheet, leftMm, 67, QStringLiteral("first request"), false);
    drawTick(sheet, leftMm + 42, 67, QStringLiteral("repeated request"), true);
    drawTick(sheet, leftMm + 90, 67, QStringLiteral("urgent"), false);
    drawTick(sheet, leftMm + 125, 67, QStringLiteral("deliver in parts"), true);
}

constexpr std::array<double, 7> columnsMm = {20, 30, 52, 122, 138, 163, 190};

void drawCells(Sheet& sheet, double baselineMm, const std::array<QString, 6>& cells, const TextStyle& style)
{
    for (size_t i = 0; i < cells.size(); ++i) {
        TextStyle cell = style;
        const bool number = i == 0 || i >= 3;
        cell.align = number ? Qt::AlignRight : Qt::AlignLeft;
        sheet.text(number ? columnsMm.at(i + 1) - 2 : columnsMm.at(i) + 2, baselineMm, cells.at(i), cell);
    }
}

/// @return the sum in pence
int drawTable(Sheet& sheet, double topMm, double rowMm)
{
    sheet.box({leftMm, topMm, rightMm - leftMm, rowMm}, formBlue);
    drawCells(sheet,
              topMm + rowMm - 3,
              {QStringLiteral("No."),
               QStringLiteral("Article"),
               QStringLiteral("Description"),
               QStringLiteral("Pieces"),
               QStringLiteral("Price each"),
               QStringLiteral("Amount")},
              {Typeface::SansBold, 9, Qt::white});
    int sum = 0;
    double y = topMm + rowMm;
    for (size_t i = 0; i < items.size(); ++i, y += rowMm) {
        const Item& item = items.at(i);
        if (i % 2 == 1)
            sheet.box({leftMm, y, rightMm - leftMm, rowMm}, fieldTint);
        sum += item.count * item.pence;
        drawCells(sheet,
                  y + rowMm - 2.9,
                  {QString::number(i + 1),
                   QLatin1String(item.number),
                   QLatin1String(item.what),
                   QString::number(item.count),
                   money(item.pence),
                   money(item.count * item.pence)},
                  {Typeface::Sans, 9.5});
    }
    for (size_t i = 0; i <= items.size() + 1; ++i)
        sheet.rule(leftMm, topMm + i * rowMm, rightMm, topMm + i * rowMm, 0.2, formBlue);
    for (const double x : columnsMm)
        sheet.rule(x, topMm, x, y, 0.2, formBlue);
    return sum;
}

void drawSum(Sheet& sheet, double topMm, const QString& label, const QString& value, bool total)
{
    TextStyle style{total ? Typeface::SansBold : Typeface::Sans, total ? 11.0 : 9.5};
    style.align = Qt::AlignRight;
    if (total)
        sheet.box({columnsMm[4], topMm, rightMm - columnsMm[4], 9}, fieldTint, formBlue, 0.4);
    sheet.text(columnsMm[5] - 2, topMm + 6, label, style);
    sheet.text(rightMm - 2, topMm + 6, value, style);
}

} // namespace

FlatPage drawForm()
{
    Sheet sheet(210, 297, QColor(252, 252, 251));
    drawHead(sheet);
    const double top = 79;
    const double row = 9;
    const int sum = drawTable(sheet, top, row);
    double y = top + row * (items.size() + 1);
    drawSum(sheet, y, QStringLiteral("Sum"), money(sum), false);
    drawSum(sheet, y + 8, QStringLiteral("Carriage"), money(1250), false);
    drawSum(sheet, y + 17.5, QStringLiteral("Total"), money(sum + 1250), true);
    TextStyle label{Typeface::SansBold, 9, formBlue};
    sheet.text(leftMm, y + 8, QStringLiteral("Reason for the request"), label);
    TextStyle hand{Typeface::SerifItalic, 13, penBlue};
    sheet.text(leftMm + 1, y + 16, QStringLiteral("The reading room opens again in November."), hand);
    sheet.text(leftMm + 1, y + 24, QStringLiteral("Lamps and stands are for the new tables."), hand);
    sheet.rule(leftMm, y + 18, leftMm + 96, y + 18, 0.15, formBlue);
    sheet.rule(leftMm, y + 26, leftMm + 96, y + 26, 0.15, formBlue);
    TextStyle notes{Typeface::Sans, 8.5, QColor(60, 62, 68)};
    notes.align = Qt::AlignJustify;
    sheet.paragraph(
        leftMm,
        y + 38,
        rightMm - leftMm,
        QStringLiteral(
            "Requests are handled in the order in which they arrive. Articles that are not in stock are "
            "delivered later at the price printed above. Please keep the second copy of this form "
            "until the delivery is complete, and return damaged articles within fourteen days."),
        notes);
    for (const double x : {leftMm, leftMm + 95}) {
        sheet.rule(x, y + 78, x + 75, y + 78, 0.25, formBlue);
        const bool applicant = x == leftMm;
        sheet.text(x,
                   y + 82.5,
                   applicant ? QStringLiteral("Signature of applicant") : QStringLiteral("Approved by"),
                   {Typeface::Sans, 7.5, formBlue});
        sheet.text(x + 6,
                   y + 75.5,
                   applicant ? QStringLiteral("B. Whitlock") : QStringLiteral("H. Ashdown"),
                   {Typeface::BookItalic, 21, penBlue});
    }
    return finish(sheet);
}

} // namespace deskpictures

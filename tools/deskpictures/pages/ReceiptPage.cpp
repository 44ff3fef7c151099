#include "Pages.h"

#include <QPainterPath>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cmath>

namespace deskpictures {
namespace {

constexpr double widthMm = 79;
constexpr double heightMm = 254;
constexpr double marginMm = 6;

struct Ware
{
    const char* name;
    int count;
    int pence;
};

constexpr std::array<Ware, 16> wares = {{
    {"RYE BREAD 750G", 1, 345},
    {"BUTTER UNSALTED", 2, 229},
    {"PLUM JAM 340G", 1, 289},
    {"BLACK TEA 100 BAGS", 1, 475},
    {"OAT BISCUITS", 3, 165},
    {"GOAT CHEESE", 1, 520},
    {"PEARS 1.24 KG", 1, 372},
    {"LEEKS BUNCH", 2, 140},
    {"LENTILS BROWN 1KG", 1, 255},
    {"SEA SALT COARSE", 1, 118},
    {"APPLE JUICE 1L", 4, 210},
    {"CANDLES WHITE 10", 1, 399},
    {"MATCHES LONG", 2, 95},
    {"NOTEBOOK A6 RULED", 1, 275},
    {"PENCILS HB 12", 1, 310},
    {"STRING 50M", 1, 185},
}};

QString money(int pence)
{
    return QStringLiteral("%1.%2").arg(pence / 100).arg(pence % 100, 2, 10, QLatin1Char('0'));
}

// Thermal paper gives a grey, slightly violet black.
const QColor thermalInk(46, 44, 58);

void drawLine(Sheet& sheet,
              double& y,
              const QString& left,
              const QString& right,
              double points = 9,
              double stepMm = 4.6)
{
    TextStyle style{Typeface::Mono, points, thermalInk};
    sheet.text(marginMm, y, left, style);
    style.align = Qt::AlignRight;
    sheet.text(widthMm - marginMm, y, right, style);
    y += stepMm;
}

void drawCentred(Sheet& sheet, double& y, const QString& words, Typeface face, double points, double stepMm)
{
    TextStyle style{face, points, thermalInk};
    style.align = Qt::AlignHCenter;
    sheet.text(widthMm / 2, y, words, style);
    y += stepMm;
}

void drawDashes(Sheet& sheet, double& y)
{
    QPen pen(thermalInk, sheet.px(0.3));
    pen.setDashPattern({4, 3});
    sheet.painter().setPen(pen);
    sheet.painter().drawLine(sheet.px(marginMm, y - 1.6), sheet.px(widthMm - marginMm, y - 1.6));
    y += 3.6;
}

// The saw of the cutter: small teeth along the upper and the lower edge.
void tearEdges(Sheet& sheet)
{
    QRandomGenerator random(41);
    QPainterPath paper(sheet.px(0, 1));
    const double toothMm = 1.6;
    const int teeth = static_cast<int>(std::ceil(widthMm / toothMm));
    for (int i = 0; i < teeth; ++i) {
        const double x = i * toothMm;
        paper.lineTo(sheet.px(x + toothMm / 2, 0.2 + 0.3 * random.generateDouble()));
        paper.lineTo(sheet.px(std::min(x + toothMm, widthMm), 1.0 + 0.2 * random.generateDouble()));
    }
    for (int i = 0; i < teeth; ++i) {
        const double x = widthMm - i * toothMm;
        paper.lineTo(sheet.px(x, heightMm - 1 + 0.2 * random.generateDouble()));
        paper.lineTo(
            sheet.px(std::max(x - toothMm / 2, 0.0), heightMm - 0.1 - 0.3 * random.generateDouble()));
    }
    paper.lineTo(sheet.px(0, heightMm - 1));
    paper.closeSubpath();
    QPainterPath outside;
    outside.addRect(sheet.px(QRectF(-1, -1, widthMm + 2, heightMm + 2)));
    QPainter& p = sheet.painter();
    p.setCompositionMode(QPainter::CompositionMode_Clear);
    p.fillPath(outside.subtracted(paper), Qt::black);
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

int drawWares(Sheet& sheet, double& y)
{
    int sum = 0;
    for (const Ware& ware : wares) {
        const int amount = ware.count * ware.pence;
        sum += amount;
        drawLine(sheet, y, QLatin1String(ware.name), money(amount));
        if (ware.count > 1)
            drawLine(sheet, y, QStringLiteral("   %1 x %2").arg(ware.count).arg(money(ware.pence)), {}, 8);
    }
    return sum;
}

} // namespace

FlatPage drawReceipt()
{
    Sheet sheet(widthMm, heightMm, QColor(247, 247, 246));
    double y = 15;
    drawCentred(sheet, y, QStringLiteral("THE CORNER PANTRY"), Typeface::SansBold, 15, 6);
    drawCentred(sheet, y, QStringLiteral("2 Lantern Square, Port Ellery"), Typeface::Mono, 8, 4.4);
    drawCentred(sheet, y, QStringLiteral("Telephone 0555 013 877"), Typeface::Mono, 8, 8);
    drawLine(sheet, y, QStringLiteral("21.10.2024  16:42"), QStringLiteral("till 3"));
    drawLine(sheet, y, QStringLiteral("receipt 0094417"), QStringLiteral("Edda"));
    drawDashes(sheet, y);
    const int sum = drawWares(sheet, y);
    drawDashes(sheet, y);
    y += 1.5;
    drawLine(sheet, y, QStringLiteral("TOTAL"), money(sum), 14, 7);
    drawLine(sheet, y, QStringLiteral("cash"), money(7000));
    drawLine(sheet, y, QStringLiteral("change"), money(7000 - sum));
    drawDashes(sheet, y);
    drawLine(sheet, y, QStringLiteral("tax 6% included"), money(sum * 6 / 106), 8);
    drawLine(sheet, y, QStringLiteral("articles"), QStringLiteral("24"), 8, 9);
    drawCentred(sheet, y, QStringLiteral("Thank you for your visit!"), Typeface::Mono, 9, 4.8);
    drawCentred(sheet, y, QStringLiteral("Goods may be returned"), Typeface::Mono, 8, 4.2);
    drawCentred(sheet, y, QStringLiteral("within 14 days with this receipt."), Typeface::Mono, 8, 4.2);
    tearEdges(sheet);
    return finish(sheet);
}

} // namespace deskpictures

#include "Pages.h"

#include <QPainterPath>

#include <cmath>

namespace deskpictures {
namespace {

constexpr double widthMm = 85.6; // ISO/IEC 7810 ID-1
constexpr double heightMm = 54;
constexpr double cornerMm = 3.2;
constexpr double cardDpi = 600; // the camera comes closer to a card than to a page
const QColor cardInk(38, 46, 62);
const QColor labelInk(64, 96, 118);

// The fine waving lines of security print, two families in complementary tints.
void drawGuilloche(Sheet& sheet)
{
    QPainter& p = sheet.painter();
    for (int family = 0; family < 2; ++family) {
        p.setPen(QPen(family == 0 ? QColor(96, 152, 170, 80) : QColor(196, 142, 110, 70), sheet.px(0.09)));
        for (int i = -12; i < 34; ++i) {
            QPainterPath wave;
            for (int step = 0; step <= 2 * widthMm; ++step) {
                const double x = step / 2.0;
                const double a = x / 9.0 + (family == 0 ? 0 : 1.7);
                const double y = i * 1.9 + 6 * std::sin(a) + 3.5 * std::sin(2.3 * a + i * 0.16) +
                                 x * (family == 0 ? 0.1 : -0.08);
                if (step == 0)
                    wave.moveTo(sheet.px(x, y));
                else
                    wave.lineTo(sheet.px(x, y));
            }
            p.drawPath(wave);
        }
    }
}

void drawGround(Sheet& sheet)
{
    QLinearGradient tint(0, 0, sheet.px(widthMm), sheet.px(heightMm));
    tint.setColorAt(0, QColor(222, 236, 240));
    tint.setColorAt(0.5, QColor(244, 240, 228));
    tint.setColorAt(1, QColor(226, 232, 220));
    sheet.painter().fillRect(sheet.px(QRectF(0, 0, widthMm, heightMm)), tint);
    drawGuilloche(sheet);
}

void drawSpecimen(Sheet& sheet, double degrees)
{
    QPainter& p = sheet.painter();
    p.save();
    p.translate(sheet.px(widthMm / 2, heightMm / 2));
    p.rotate(degrees);
    TextStyle word{Typeface::SansBold, 30, QColor(192, 44, 50, 120)};
    word.align = Qt::AlignHCenter;
    word.letterSpacingPt = 3;
    sheet.text(0, 4, QStringLiteral("SPECIMEN"), word);
    p.restore();
}

// A lighthouse on a hill, the sign of a country that is on no map.
void drawEmblem(Sheet& sheet, double xMm, double yMm, double sizeMm)
{
    QPainter& p = sheet.painter();
    p.save();
    p.translate(sheet.px(xMm, yMm));
    p.scale(sheet.px(sizeMm), sheet.px(sizeMm));
    p.setPen(QPen(labelInk, 0.03));
    p.setBrush(QColor(255, 255, 255, 150));
    p.drawEllipse(QPointF(0, 0), 0.5, 0.5);
    p.setPen(Qt::NoPen);
    p.setBrush(labelInk);
    QPainterPath tower(QPointF(-0.1, 0.28));
    tower.lineTo(-0.055, -0.16);
    tower.lineTo(0.055, -0.16);
    tower.lineTo(0.1, 0.28);
    p.drawPath(tower);
    p.drawRect(QRectF(-0.06, -0.3, 0.12, 0.1));
    p.drawChord(QRectF(-0.4, 0.2, 0.8, 0.5), 30 * 16, 120 * 16);
    p.setBrush(QColor(206, 160, 60));
    const QPointF beamLeft[] = {{-0.07, -0.25}, {-0.4, -0.36}, {-0.4, -0.14}};
    const QPointF beamRight[] = {{0.07, -0.25}, {0.4, -0.36}, {0.4, -0.14}};
    p.drawPolygon(beamLeft, 3);
    p.drawPolygon(beamRight, 3);
    p.restore();
}

void drawEntry(
    Sheet& sheet, double xMm, double yMm, const QString& label, const QString& value, double points = 8.5)
{
    sheet.text(xMm, yMm, label, {Typeface::Sans, 4.6, labelInk});
    sheet.text(xMm, yMm + 3.5, value, {Typeface::SansBold, points, cardInk});
}

void roundCorners(Sheet& sheet)
{
    QPainterPath outside;
    outside.addRect(sheet.px(QRectF(-1, -1, widthMm + 2, heightMm + 2)));
    QPainterPath card;
    card.addRoundedRect(sheet.px(QRectF(0, 0, widthMm, heightMm)), sheet.px(cornerMm), sheet.px(cornerMm));
    QPainter& p = sheet.painter();
    p.setCompositionMode(QPainter::CompositionMode_Clear);
    p.fillPath(outside.subtracted(card), Qt::black);
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void drawPhoto(Sheet& sheet, QRectF mm)
{
    const QImage portrait = drawPortrait(sheet.px(mm).size().toSize(), 1);
    QPainterPath frame;
    frame.addRoundedRect(sheet.px(mm), sheet.px(1), sheet.px(1));
    QPainter& p = sheet.painter();
    p.save();
    p.setClipPath(frame);
    p.drawImage(sheet.px(mm), portrait);
    p.restore();
}

} // namespace

FlatPage drawCardFront()
{
    Sheet sheet(widthMm, heightMm, Qt::white, cardDpi);
    drawGround(sheet);
    drawEmblem(sheet, 8.5, 7.6, 9);
    TextStyle country{Typeface::SansBold, 10, QColor(28, 70, 96)};
    country.letterSpacingPt = 0.8;
    sheet.text(15, 6.8, QStringLiteral("ISLE OF TARRENDEL"), country);
    sheet.text(15, 10.6, QStringLiteral("Resident's card"), {Typeface::Sans, 7, labelInk});
    drawPhoto(sheet, {5, 15, 24, 30});
    const double x = 33;
    drawEntry(sheet, x, 17, QStringLiteral("Name"), QStringLiteral("MERRIWETHER"), 10);
    drawEntry(sheet, x, 24, QStringLiteral("Given names"), QStringLiteral("Juniper Ada"), 10);
    drawEntry(sheet, x, 31, QStringLiteral("Born"), QStringLiteral("28 FEB 1990"));
    drawEntry(sheet, x + 24, 31, QStringLiteral("Sex"), QStringLiteral("F"));
    drawEntry(sheet, x + 34, 31, QStringLiteral("Height"), QStringLiteral("171 cm"));
    drawEntry(sheet, x, 38, QStringLiteral("Place of birth"), QStringLiteral("PORT ELLERY"));
    drawEntry(sheet, x + 24, 38, QStringLiteral("Valid until"), QStringLiteral("31 DEC 2031"));
    drawEntry(sheet, x, 45, QStringLiteral("Card number"), QStringLiteral("TX 00 4187 2260"), 10);
    sheet.text(6, 50.2, QStringLiteral("J. Merriwether"), {Typeface::BookItalic, 10, QColor(30, 36, 80)});
    drawSpecimen(sheet, -24);
    roundCorners(sheet);
    return finish(sheet);
}

FlatPage drawCardBack()
{
    Sheet sheet(widthMm, heightMm, Qt::white, cardDpi);
    drawGround(sheet);
    drawEntry(sheet, 6, 7, QStringLiteral("Address"), QStringLiteral("7 Lantern Square, Port Ellery"), 9);
    drawEntry(sheet, 6, 15, QStringLiteral("Issued by"), QStringLiteral("Office of Residents, Tarrendel"), 9);
    drawEntry(sheet, 6, 23, QStringLiteral("Issued on"), QStringLiteral("2 JAN 2022"));
    drawEntry(sheet, 32, 23, QStringLiteral("Eyes"), QStringLiteral("brown"));
    drawEmblem(sheet, 71, 16, 20);
    sheet.box({0, 33, widthMm, 21}, QColor(250, 250, 248));
    TextStyle lines{Typeface::Mono, 9.6, QColor(24, 24, 28)};
    lines.letterSpacingPt = 0.35;
    sheet.text(5, 39.5, QStringLiteral("SPECIMEN<TARRENDEL<0041872260<"), lines);
    sheet.text(5, 44.8, QStringLiteral("9002281F3112317<<<<<<<<<<<<<<8"), lines);
    sheet.text(5, 50.1, QStringLiteral("MERRIWETHER<<JUNIPER<ADA<<<<<<"), lines);
    drawSpecimen(sheet, -20);
    roundCorners(sheet);
    return finish(sheet);
}

} // namespace deskpictures

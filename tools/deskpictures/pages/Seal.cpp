#include "Seal.h"

#include <QPainterPath>
#include <QRandomGenerator>

#include <cmath>

namespace deskpictures {
namespace {

QPainterPath starPath(double radius)
{
    QPainterPath star;
    for (int i = 0; i < 10; ++i) {
        const double angle = M_PI * i / 5 - M_PI / 2;
        const double r = i % 2 == 0 ? radius : radius * 0.382;
        const QPointF corner(r * std::cos(angle), r * std::sin(angle));
        if (i == 0)
            star.moveTo(corner);
        else
            star.lineTo(corner);
    }
    star.closeSubpath();
    return star;
}

void drawRing(Sheet& stamp, const Seal& seal)
{
    QPainter& p = stamp.painter();
    TextStyle style{seal.face, seal.ringPoints, seal.ink};
    style.align = Qt::AlignHCenter;
    const double middle = stamp.widthMm() / 2;
    const double step = seal.sweepDegrees / std::max<qsizetype>(1, seal.ring.size() - 1);
    for (int i = 0; i < seal.ring.size(); ++i) {
        p.save();
        p.translate(stamp.px(middle, middle));
        p.rotate(-seal.sweepDegrees / 2 + i * step);
        const double capMm = seal.ringPoints * 25.4 / 72 * 0.76;
        stamp.text(0, -(seal.radiusMm * 0.92 - 1.2 - capMm), seal.ring.mid(i, 1), style);
        p.restore();
    }
}

// A rubber stamp takes and gives its ink unevenly: speckles and a few dry patches.
void wear(QImage& stamp, quint32 seed)
{
    QRandomGenerator random(seed);
    QPainter p(&stamp);
    p.setRenderHint(QPainter::Antialiasing);
    p.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    p.setPen(Qt::NoPen);
    const double size = stamp.width();
    for (int i = 0; i < 2600; ++i) {
        p.setBrush(QColor(0, 0, 0, 60 + random.bounded(150)));
        const double r = size * (0.0008 + 0.0022 * std::pow(random.generateDouble(), 3));
        p.drawEllipse(QPointF(random.generateDouble() * size, random.generateDouble() * size), r, r);
    }
    for (int i = 0; i < 7; ++i) {
        const QPointF centre(random.generateDouble() * size, random.generateDouble() * size);
        const double r = size * (0.08 + 0.12 * random.generateDouble());
        QRadialGradient dry(centre, r);
        dry.setColorAt(0, QColor(0, 0, 0, 110));
        dry.setColorAt(1, QColor(0, 0, 0, 0));
        p.setBrush(dry);
        p.drawEllipse(centre, r, r);
    }
}

QImage makeStamp(const Seal& seal, double dpi)
{
    const double side = 2 * seal.radiusMm + 2;
    Sheet stamp(side, side, Qt::transparent, dpi);
    QPainter& p = stamp.painter();
    const QPointF middle = stamp.px(side / 2, side / 2);
    p.setPen(QPen(seal.ink, stamp.px(1.1)));
    p.drawEllipse(middle, stamp.px(seal.radiusMm - 0.6), stamp.px(seal.radiusMm - 0.6));
    drawRing(stamp, seal);
    double below = side / 2 + 1.5;
    if (seal.star) {
        p.save();
        p.translate(middle);
        p.fillPath(starPath(stamp.px(seal.radiusMm * 0.34)), seal.ink);
        p.restore();
        below = side / 2 + seal.radiusMm * 0.62;
    } else {
        p.setPen(QPen(seal.ink, stamp.px(0.4)));
        p.drawEllipse(middle, stamp.px(seal.radiusMm * 0.58), stamp.px(seal.radiusMm * 0.58));
    }
    TextStyle centre{seal.face, seal.star ? seal.ringPoints * 0.8 : seal.ringPoints * 0.92, seal.ink};
    centre.align = Qt::AlignHCenter;
    stamp.text(side / 2, below, seal.centre, centre);
    QImage image = stamp.take();
    wear(image, 7 + static_cast<quint32>(seal.ring.size()));
    return image;
}

} // namespace

Seal starSeal(const QColor& ink)
{
    return {21,
            ink,
            QStringLiteral("云溪镇图书馆示例印章"),
            QStringLiteral("样品专用"),
            Typeface::ChineseBold,
            15,
            232,
            true};
}

Seal ringSeal(const QColor& ink)
{
    return {20,
            ink,
            QStringLiteral("МУЗЕЙ БУМАГИ • МАСТЕРСКАЯ • "),
            QStringLiteral("ОБРАЗЕЦ"),
            Typeface::SansBold,
            10.5,
            347,
            false};
}

void press(Sheet& sheet, const Seal& seal, double xMm, double yMm, double degrees)
{
    const QImage stamp = makeStamp(seal, sheet.dpi());
    QPainter& p = sheet.painter();
    p.save();
    p.setCompositionMode(QPainter::CompositionMode_Multiply); // as ink over print
    p.translate(sheet.px(xMm, yMm));
    p.rotate(degrees);
    p.setOpacity(0.9);
    p.drawImage(QPointF(-stamp.width() / 2.0, -stamp.height() / 2.0), stamp);
    p.restore();
}

} // namespace deskpictures

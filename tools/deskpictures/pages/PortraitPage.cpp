#include "Pages.h"

#include <QPainterPath>

#include <cmath>

namespace deskpictures {
namespace {

const QColor skin(226, 178, 148);
const QColor skinShade(186, 128, 100);
const QColor hair(62, 42, 32);
constexpr double portraitHeight = 1.25;

// All coordinates: width 1, height 1.25, origin at the top left.

void drawBackground(QPainter& p)
{
    QRadialGradient wall(QPointF(0.42, 0.4), 0.95);
    wall.setColorAt(0, QColor(205, 214, 222));
    wall.setColorAt(1, QColor(138, 152, 166));
    p.fillRect(QRectF(-2, -1, 5, 4), wall);
}

void drawShoulders(QPainter& p)
{
    QPainterPath jacket(QPointF(-0.06, 1.4));
    jacket.cubicTo({-0.05, 1.02}, {0.12, 0.96}, {0.36, 0.9});
    jacket.lineTo(0.64, 0.9);
    jacket.cubicTo({0.88, 0.96}, {1.05, 1.02}, {1.06, 1.4});
    jacket.closeSubpath();
    QLinearGradient cloth(0, 0.9, 1, 1.25);
    cloth.setColorAt(0, QColor(58, 74, 104));
    cloth.setColorAt(1, QColor(28, 38, 60));
    p.fillPath(jacket, cloth);
    QPainterPath shirt(QPointF(0.385, 0.89));
    shirt.lineTo(0.5, 1.16);
    shirt.lineTo(0.615, 0.89);
    shirt.closeSubpath();
    p.fillPath(shirt, QColor(236, 238, 240));
    p.setPen(QPen(QColor(20, 28, 46), 0.008, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(0.37, 0.9), QPointF(0.49, 1.25));
    p.drawLine(QPointF(0.63, 0.9), QPointF(0.51, 1.25));
    p.setPen(Qt::NoPen);
    QPainterPath neck(QPointF(0.405, 0.7));
    neck.lineTo(0.4, 0.9);
    neck.cubicTo({0.44, 0.97}, {0.56, 0.97}, {0.6, 0.9});
    neck.lineTo(0.595, 0.7);
    neck.closeSubpath();
    QLinearGradient throat(0, 0.74, 0, 0.95);
    throat.setColorAt(0, skinShade.darker(118));
    throat.setColorAt(1, skin.darker(106));
    p.fillPath(neck, throat);
}

QPainterPath facePath()
{
    QPainterPath face(QPointF(0.5, 0.2));
    face.cubicTo({0.68, 0.2}, {0.735, 0.36}, {0.715, 0.52});
    face.cubicTo({0.7, 0.68}, {0.6, 0.82}, {0.5, 0.825});
    face.cubicTo({0.4, 0.82}, {0.3, 0.68}, {0.285, 0.52});
    face.cubicTo({0.265, 0.36}, {0.32, 0.2}, {0.5, 0.2});
    return face;
}

void drawFace(QPainter& p)
{
    QRadialGradient round(QPointF(0.45, 0.45), 0.42);
    round.setColorAt(0, skin.lighter(108));
    round.setColorAt(0.6, skin);
    round.setColorAt(1, skinShade);
    p.fillPath(facePath(), round);
    for (const double x : {0.38, 0.62}) {
        QRadialGradient cheek(QPointF(x, 0.61), 0.08);
        cheek.setColorAt(0, QColor(214, 120, 104, 90));
        cheek.setColorAt(1, QColor(214, 120, 104, 0));
        p.fillRect(QRectF(x - 0.08, 0.53, 0.16, 0.16), cheek);
    }
}

// Chin-long hair, of which the face hides the middle.
void drawBackHair(QPainter& p)
{
    QPainterPath fall(QPointF(0.5, 0.1));
    fall.cubicTo({0.8, 0.1}, {0.84, 0.4}, {0.8, 0.74});
    fall.cubicTo({0.77, 0.8}, {0.7, 0.8}, {0.66, 0.76});
    fall.lineTo(0.34, 0.76);
    fall.cubicTo({0.3, 0.8}, {0.23, 0.8}, {0.2, 0.74});
    fall.cubicTo({0.16, 0.4}, {0.2, 0.1}, {0.5, 0.1});
    QLinearGradient gloss(0.18, 0.3, 0.82, 0.7);
    gloss.setColorAt(0, hair.lighter(120));
    gloss.setColorAt(0.2, hair.lighter(150));
    gloss.setColorAt(0.4, hair.darker(130));
    gloss.setColorAt(1, hair.darker(150));
    p.fillPath(fall, gloss);
}

void drawEye(QPainter& p, double x)
{
    QRadialGradient socket(QPointF(x, 0.468), 0.085);
    socket.setColorAt(0, QColor(130, 80, 60, 130));
    socket.setColorAt(1, QColor(130, 80, 60, 0));
    p.fillRect(QRectF(x - 0.09, 0.38, 0.18, 0.18), socket);
    QPainterPath lid(QPointF(x - 0.056, 0.485));
    lid.cubicTo({x - 0.03, 0.45}, {x + 0.03, 0.45}, {x + 0.056, 0.485});
    lid.cubicTo({x + 0.025, 0.506}, {x - 0.025, 0.506}, {x - 0.056, 0.485});
    p.fillPath(lid, QColor(244, 240, 236));
    p.save();
    p.setClipPath(lid);
    p.setBrush(QColor(78, 58, 42));
    p.drawEllipse(QPointF(x, 0.478), 0.0235, 0.0235);
    p.setBrush(QColor(16, 12, 10));
    p.drawEllipse(QPointF(x, 0.478), 0.011, 0.011);
    p.setBrush(QColor(255, 255, 255, 230));
    p.drawEllipse(QPointF(x - 0.008, 0.47), 0.005, 0.005);
    p.restore();
    p.setPen(QPen(QColor(48, 30, 24), 0.011, Qt::SolidLine, Qt::RoundCap));
    QPainterPath lash(QPointF(x - 0.058, 0.486));
    lash.cubicTo({x - 0.03, 0.447}, {x + 0.03, 0.447}, {x + 0.06, 0.484});
    p.setBrush(Qt::NoBrush);
    p.drawPath(lash);
    p.setPen(Qt::NoPen);
    const double out = x < 0.5 ? -1 : 1; // towards the temple
    QPainterPath brow(QPointF(x - out * 0.062, 0.412));
    brow.cubicTo({x - out * 0.02, 0.39}, {x + out * 0.035, 0.382}, {x + out * 0.075, 0.41});
    brow.cubicTo({x + out * 0.035, 0.396}, {x - out * 0.02, 0.408}, {x - out * 0.058, 0.426});
    brow.closeSubpath();
    p.fillPath(brow, QColor(62, 42, 32, 215));
}

void drawNoseAndMouth(QPainter& p)
{
    QLinearGradient bridge(0.47, 0, 0.56, 0);
    bridge.setColorAt(0, QColor(255, 225, 200, 110));
    bridge.setColorAt(0.45, QColor(255, 225, 200, 60));
    bridge.setColorAt(1, QColor(150, 92, 70, 100));
    QPainterPath nose(QPointF(0.485, 0.46));
    nose.cubicTo({0.485, 0.54}, {0.45, 0.585}, {0.452, 0.605});
    nose.cubicTo({0.47, 0.63}, {0.53, 0.63}, {0.55, 0.605});
    nose.cubicTo({0.55, 0.585}, {0.518, 0.54}, {0.516, 0.46});
    p.fillPath(nose, bridge);
    p.setBrush(QColor(120, 66, 52, 170));
    p.drawEllipse(QPointF(0.474, 0.613), 0.013, 0.006);
    p.drawEllipse(QPointF(0.528, 0.613), 0.013, 0.006);
    QPainterPath mouth(QPointF(0.415, 0.695));
    mouth.cubicTo({0.45, 0.675}, {0.48, 0.672}, {0.5, 0.68});
    mouth.cubicTo({0.52, 0.672}, {0.55, 0.675}, {0.585, 0.695});
    mouth.cubicTo({0.55, 0.728}, {0.45, 0.728}, {0.415, 0.695});
    p.fillPath(mouth, QColor(178, 88, 84));
    p.setPen(QPen(QColor(120, 48, 48), 0.006, Qt::SolidLine, Qt::RoundCap));
    QPainterPath parting(QPointF(0.413, 0.695));
    parting.cubicTo({0.46, 0.7}, {0.54, 0.7}, {0.588, 0.695});
    p.setBrush(Qt::NoBrush);
    p.drawPath(parting);
    p.setPen(Qt::NoPen);
}

void drawHair(QPainter& p)
{
    QPainterPath crown(QPointF(0.25, 0.72));
    crown.cubicTo({0.17, 0.3}, {0.26, 0.1}, {0.5, 0.1});
    crown.cubicTo({0.74, 0.1}, {0.83, 0.3}, {0.75, 0.72});
    crown.cubicTo({0.735, 0.56}, {0.735, 0.4}, {0.66, 0.29});
    crown.cubicTo({0.58, 0.335}, {0.44, 0.335}, {0.385, 0.245});
    crown.cubicTo({0.3, 0.34}, {0.27, 0.54}, {0.25, 0.72});
    QLinearGradient gloss(0.3, 0.1, 0.7, 0.4);
    gloss.setColorAt(0, hair.lighter(125));
    gloss.setColorAt(0.3, hair.lighter(165));
    gloss.setColorAt(0.55, hair);
    gloss.setColorAt(1, hair.darker(140));
    p.fillPath(crown, gloss);
    p.save();
    p.setClipPath(crown);
    p.setBrush(Qt::NoBrush);
    for (int i = 0; i < 60; ++i) {
        const double t = i / 59.0;
        const QColor strand = i % 2 ? QColor(30, 18, 12, 60) : QColor(150, 110, 84, 46);
        p.setPen(QPen(strand, 0.004));
        QPainterPath line(QPointF(0.38 + 0.02 * std::sin(i * 7.0), 0.12));
        line.cubicTo({0.3 + 0.5 * t, 0.13}, {0.18 + 0.64 * t, 0.24}, {0.22 + 0.56 * t, 0.74});
        p.drawPath(line);
    }
    p.restore();
    p.setPen(Qt::NoPen);
}

} // namespace

QImage drawPortrait(QSize px, double headRoom)
{
    QImage image(px, QImage::Format_RGBA8888_Premultiplied);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const double unit = px.height() / (portraitHeight * headRoom);
    p.translate((px.width() - unit) / 2, px.height() - unit * portraitHeight);
    p.scale(unit, unit);
    p.setPen(Qt::NoPen);
    drawBackground(p);
    drawBackHair(p);
    drawShoulders(p);
    drawFace(p);
    drawEye(p, 0.405);
    drawEye(p, 0.595);
    drawNoseAndMouth(p);
    drawHair(p);
    return image;
}

} // namespace deskpictures

#include "Pages.h"

#include <QPainterPath>
#include <QRandomGenerator>

#include <cmath>

namespace deskpictures {
namespace {

struct Seal
{
    double radiusMm;
    QColor ink;
    QString ring;   ///< along the upper arc
    QString centre; ///< below the star; empty: in its place
    Typeface face;
    double ringPoints;
    double sweepDegrees; ///< how much of the circle the ring's words take
    bool star;
};

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

// Ink lies over the print and darkens it, hence the multiplication.
void press(Sheet& sheet, const Seal& seal, double xMm, double yMm, double degrees)
{
    const QImage stamp = makeStamp(seal, sheet.dpi());
    QPainter& p = sheet.painter();
    p.save();
    p.setCompositionMode(QPainter::CompositionMode_Multiply);
    p.translate(sheet.px(xMm, yMm));
    p.rotate(degrees);
    p.setOpacity(0.9);
    p.drawImage(QPointF(-stamp.width() / 2.0, -stamp.height() / 2.0), stamp);
    p.restore();
}

} // namespace

FlatPage drawRedSeal()
{
    Sheet sheet(210, 297);
    TextStyle title{Typeface::ChineseBold, 26};
    title.align = Qt::AlignHCenter;
    title.letterSpacingPt = 12;
    sheet.text(107, 48, QStringLiteral("证明"), title);
    TextStyle body{Typeface::Chinese, 14};
    body.leading = 2.1;
    body.firstLineIndentMm = 2 * 14 * 25.4 / 72;
    const double width = 31 * 14 * 25.4 / 72;
    const double left = (210 - width) / 2;
    double y = 64;
    for (const QString& words :
         {QStringLiteral("兹有云溪镇图书馆读者林若溪，于二〇二四年三月至九月参加本馆组织的古籍修复志愿活动，"
                         "累计服务一百二十六小时，共修复线装书十四册、"
                         "地图三幅，工作认真细致，得到馆员和读者的一致好评。"),
          QStringLiteral(
              "活动期间，该读者还协助整理旧报纸目录两千余条，并为小学生举办了四次“怎样爱护书籍”的讲座。"),
          QStringLiteral("本证明仅作为示例文件使用，其中的人名、地名和单位名称均为虚构。"),
          QStringLiteral("特此证明。")})
        y = sheet.paragraph(left, y, width, words, body);
    body.align = Qt::AlignRight;
    sheet.text(left + width - 6, y + 26, QStringLiteral("云溪镇图书馆（示例）"), body);
    sheet.text(left + width - 6, y + 38, QStringLiteral("二〇二四年十月八日"), body);
    press(sheet, starSeal(QColor(206, 32, 38)), left + width - 32, y + 27, -8);
    return finish(sheet);
}

FlatPage drawBlueSeal()
{
    Sheet sheet(210, 297, QColor(251, 250, 245));
    TextStyle title{Typeface::SerifBold, 20};
    title.align = Qt::AlignHCenter;
    title.letterSpacingPt = 4;
    sheet.text(105, 46, QStringLiteral("СПРАВКА"), title);
    TextStyle number{Typeface::Serif, 12};
    number.align = Qt::AlignHCenter;
    sheet.text(105, 55, QStringLiteral("№ 118 от 4 июня 2024 года"), number);
    TextStyle body{Typeface::Serif, 13};
    body.align = Qt::AlignJustify;
    body.leading = 1.6;
    body.firstLineIndentMm = 10;
    double y = 68;
    for (const QString& words :
         {QStringLiteral(
              "Дана Марии Лесной в том, что она действительно занимается в переплётной мастерской при музее "
              "бумаги с первого сентября 2022 года и выполнила все учебные работы, предусмотренные "
              "программой."),
          QStringLiteral("За это время ею переплетены тридцать две книги, восстановлены шесть атласов и "
                         "изготовлен макет старой "
                         "бумажной мельницы, который выставлен в главном зале музея."),
          QStringLiteral(
              "Все имена и названия в этом документе вымышлены. Справка служит образцом и предъявлению не "
              "подлежит.")})
        y = sheet.paragraph(28, y, 154, words, body) + 2;
    body.align = Qt::AlignLeft;
    sheet.text(28, y + 24, QStringLiteral("Заведующая мастерской"), body);
    sheet.rule(88, y + 25, 132, y + 25, 0.25, body.ink);
    sheet.text(136, y + 24, QStringLiteral("А. П. Верескова"), body);
    sheet.text(94, y + 23, QStringLiteral("А. Верескова"), {Typeface::BookItalic, 18, QColor(40, 40, 48)});
    sheet.text(28, y + 40, QStringLiteral("4 июня 2024 года"), body);
    press(sheet, ringSeal(QColor(38, 66, 176)), 80, y + 27, 6);
    return finish(sheet);
}

void pressSeal(Sheet& sheet, bool star, const QColor& ink, const QPointF& middleMm, double degrees)
{
    press(sheet, star ? starSeal(ink) : ringSeal(ink), middleMm.x(), middleMm.y(), degrees);
}

} // namespace deskpictures

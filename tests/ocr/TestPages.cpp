#include "TestPages.h"

#include <QFontDatabase>
#include <QPainter>

QImage testPages::page(const QSize& size, const QStringList& lines, const Style& style, int left, int top)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(250, 249, 246));
    image.setDotsPerMeterX(8464);
    image.setDotsPerMeterY(8464);
    print(image, lines, style, left, top);
    return image;
}

void testPages::print(QImage& page, const QStringList& lines, const Style& style, int left, int top)
{
    QPainter painter(&page);
    QFont font(style.family);
    font.setPixelSize(style.size);
    painter.setFont(font);
    painter.setPen(QColor(35, 35, 40));
    for (const QString& line : lines) {
        painter.drawText(left, top, line);
        top += style.pitch;
    }
}

QString testPages::chineseFamily()
{
    const QStringList families = QFontDatabase().families(QFontDatabase::SimplifiedChinese);
    return families.value(families.indexOf(QStringLiteral("Noto Sans CJK SC")), families.value(0));
}

#include "ButtonPainter.h"

#include "Caption.h"

#include <QPainter>
#include <QSvgRenderer>

#include <stdexcept>
#include <utility>

namespace {

constexpr int buttonSide = 84;
constexpr int iconSide = 48;
constexpr int iconTop = 4;
constexpr QRect captionBox(3, 52, buttonSide - 6, 29);

QImage transparent(const QSize& size, int scale)
{
    QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

ButtonPainter::ButtonPainter(QString iconFolder) : iconFolder_(std::move(iconFolder)) {}

QImage ButtonPainter::plain(const QString& source, const QSize& size, int iconHeight, int scale) const
{
    const QString path = QStringLiteral("%1/%2.svg").arg(iconFolder_, source);
    QSvgRenderer drawing(path);
    if (!drawing.isValid())
        throw std::runtime_error((path + QStringLiteral(": not a readable drawing")).toStdString());
    QSizeF icon = drawing.defaultSize();
    icon.scale(size.width(), iconHeight, Qt::KeepAspectRatio);
    QRectF target(QPointF(), icon * scale);
    target.moveCenter(QRectF(QPointF(), QSizeF(size) * scale).center());

    QImage image = transparent(size, scale);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter, target);
    return image;
}

QImage ButtonPainter::captioned(const QString& source,
                                const QString& caption,
                                const QString& language,
                                int scale) const
{
    QImage image = transparent(QSize(buttonSide, buttonSide), scale);
    QPainter painter(&image);
    painter.drawImage(QPoint((buttonSide - iconSide) / 2, iconTop) * scale,
                      plain(source, QSize(iconSide, iconSide), iconSide, scale));
    const QRect box(captionBox.topLeft() * scale, captionBox.size() * scale);
    drawCaption(painter, caption, language, box, scale);
    return image;
}

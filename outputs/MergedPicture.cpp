#include "MergedPicture.h"

#include "FrameScaler.h"
#include "MergeLayout.h"

#include <QPainter>

namespace {

constexpr int displaySide = 1600; // px

void place(QPainter& painter, const QRect& rect, const QImage& picture)
{
    if (rect.size() == picture.size() || picture.hasAlphaChannel()) {
        painter.drawImage(rect, picture);
        return;
    }
    FrameScaler scaler; // small print survives its reducing, unlike the painter's own
    painter.drawImage(rect.topLeft(), scaler.scale(picture, rect.size(), QRect(QPoint(), rect.size())));
}

} // namespace

QImage mergedPicture::compose(const MergeLayout& layout, const QImage& first, const QImage& second)
{
    QImage result(layout.size, QImage::Format_RGB32);
    if (result.isNull())
        return result;
    result.fill(Qt::white);
    QPainter painter(&result);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    place(painter, layout.first, first);
    place(painter, layout.second, second);
    return result;
}

QImage mergedPicture::forDisplay(const QImage& picture)
{
    const QSize size = picture.size().scaled(displaySide, displaySide, Qt::KeepAspectRatio);
    if (size.width() >= picture.width() || picture.hasAlphaChannel())
        return picture;
    FrameScaler scaler;
    const QSize whole = size.expandedTo(QSize(1, 1));
    return scaler.scale(picture, whole, QRect(QPoint(), whole));
}

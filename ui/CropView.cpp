#include "CropView.h"

#include "CropCorner.h"
#include "Look.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int edge = 16;           // px around the picture, so that a corner can be held at its edge
constexpr double leastArea = 1e-3; // of the picture

double turn(const QPointF& a, const QPointF& b, const QPointF& c)
{
    return (b.x() - a.x()) * (c.y() - b.y()) - (b.y() - a.y()) * (c.x() - b.x());
}

} // namespace

PictureEdits::Corners wholePicture()
{
    return {QPointF(0, 0), QPointF(1, 0), QPointF(1, 1), QPointF(0, 1)};
}

CropView::CropView(QWidget* parent) : QWidget(parent), corners_(wholePicture())
{
    setMinimumSize(320, 240);
    setAccessibleName(tr("Picture with the corners of the page"));
    const std::array<QString, 4> names{
        tr("Upper left corner"), tr("Upper right corner"), tr("Lower right corner"), tr("Lower left corner")};
    for (std::size_t i = 0; i < names.size(); ++i) {
        handles_[i] = new CropCorner(names[i], this);
        handles_[i]->setObjectName(QStringLiteral("corner%1").arg(i));
        handles_[i]->hide();
        connect(handles_[i], &CropCorner::wanted, this, [this, i](const QPointF& to) { drag(i, to); });
    }
}

void CropView::show(const QImage& picture, const PictureEdits::Corners& corners)
{
    picture_ = picture;
    for (CropCorner* handle : handles_)
        handle->setVisible(!picture.isNull());
    setCorners(corners);
}

void CropView::setCorners(const PictureEdits::Corners& corners)
{
    std::transform(corners.begin(), corners.end(), corners_.begin(), [](const QPointF& corner) {
        return QPointF(std::clamp(corner.x(), 0.0, 1.0), std::clamp(corner.y(), 0.0, 1.0));
    });
    placeCorners();
    update();
    Q_EMIT changed();
}

bool CropView::isUsable() const
{
    for (std::size_t i = 0; i < 4; ++i)
        if (turn(corners_[i], corners_[(i + 1) % 4], corners_[(i + 2) % 4]) < leastArea)
            return false;
    return !picture_.isNull();
}

QRectF CropView::pictureRect() const
{
    const QRectF room = QRectF(rect()).adjusted(edge, edge, -edge, -edge);
    QRectF place(QPointF(), QSizeF(picture_.size()).scaled(room.size(), Qt::KeepAspectRatio));
    place.moveCenter(room.center());
    return place;
}

QPointF CropView::shown(const QPointF& corner) const
{
    const QRectF place = pictureRect();
    return {place.left() + corner.x() * place.width(), place.top() + corner.y() * place.height()};
}

void CropView::placeCorners()
{
    for (std::size_t i = 0; i < 4; ++i) {
        const QSizeF half = QSizeF(handles_[i]->size()) / 2;
        handles_[i]->move((shown(corners_[i]) - QPointF(half.width(), half.height())).toPoint());
    }
}

void CropView::drag(std::size_t index, const QPointF& to)
{
    const QRectF place = pictureRect();
    if (place.isEmpty())
        return;
    PictureEdits::Corners corners = corners_;
    corners[index] = {(to.x() - place.left()) / place.width(), (to.y() - place.top()) / place.height()};
    setCorners(corners);
}

void CropView::resizeEvent(QResizeEvent*)
{
    placeCorners();
}

void CropView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(18, 74, 84));
    if (picture_.isNull()) {
        painter.setPen(Look::text);
        painter.drawText(rect(), Qt::AlignCenter, tr("The picture is being read..."));
        return;
    }
    painter.setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
    painter.drawImage(pictureRect(), picture_);
    QPolygonF page;
    for (const QPointF& corner : corners_)
        page.append(shown(corner));
    QPainterPath outside, inside;
    outside.addRect(pictureRect());
    inside.addPolygon(page);
    painter.fillPath(outside.subtracted(inside), QColor(0, 0, 0, 130));
    painter.setPen(QPen(isUsable() ? Look::focus : QColor(229, 57, 53), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(page);
}

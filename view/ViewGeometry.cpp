#include "ViewGeometry.h"

#include <algorithm>

namespace {

/// Keeps a stretch [place, place + length) in reach of a view of the given extent.
int inReach(int place, int length, int extent)
{
    const int kept = (std::min(length, extent) + 3) / 4;
    return std::clamp(place, kept - length, extent - kept);
}

} // namespace

void ViewGeometry::setViewSize(const QSize& size)
{
    view_ = size;
    place();
}

void ViewGeometry::setSourceSize(const QSize& size)
{
    source_ = size;
    place();
}

void ViewGeometry::setExpanding(bool expanding)
{
    expanding_ = expanding;
    place();
}

void ViewGeometry::zoomBy(int steps)
{
    zoomTenths_ = std::clamp(zoomTenths_ + steps, 1, 20);
    place();
}

void ViewGeometry::fit()
{
    zoomTenths_ = 10;
    pan_ = QPoint();
    place();
}

void ViewGeometry::panBy(const QPoint& delta)
{
    pan_ += delta;
    place();
}

void ViewGeometry::place()
{
    const QSize before = displayed_.size();
    displayed_ = QRect();
    if (source_.isEmpty() || view_.isEmpty())
        return;
    const QSize room(view_.width() * zoomTenths_ / 10, view_.height() * zoomTenths_ / 10);
    const auto mode = expanding_ ? Qt::KeepAspectRatioByExpanding : Qt::KeepAspectRatio;
    const QSize size = source_.scaled(room, mode).expandedTo(QSize(1, 1));
    if (size != before)
        pan_ = QPoint();
    const QPoint centring((view_.width() - size.width()) / 2, (view_.height() - size.height()) / 2);
    const QPoint corner(inReach(centring.x() + pan_.x(), size.width(), view_.width()),
                        inReach(centring.y() + pan_.y(), size.height(), view_.height()));
    pan_ = corner - centring; // what was pushed beyond the limit does not have to be pulled back first
    displayed_ = QRect(corner, size);
}

QRect ViewGeometry::visible() const
{
    return displayed_ & QRect(QPoint(), view_);
}

QRect ViewGeometry::toSource(const QRect& rectangle) const
{
    const QRect shown = rectangle & displayed_;
    if (shown.isEmpty())
        return {};
    const double scaleX = double(source_.width()) / displayed_.width();
    const double scaleY = double(source_.height()) / displayed_.height();
    const QRect source(qRound((shown.x() - displayed_.x()) * scaleX),
                       qRound((shown.y() - displayed_.y()) * scaleY),
                       qRound(shown.width() * scaleX),
                       qRound(shown.height() * scaleY));
    const QRect clipped = source & QRect(QPoint(), source_);
    return clipped.isEmpty() ? QRect() : clipped;
}

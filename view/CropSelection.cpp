#include "CropSelection.h"

#include "ViewGeometry.h"

void CropSelection::set(const QRect& rectangle, const ViewGeometry& geometry)
{
    drawn_ = rectangle;
    displayed_ = geometry.displayed();
    publish(geometry);
}

QRect CropSelection::inView(const ViewGeometry& geometry) const
{
    const QRect displayed = geometry.displayed();
    if (drawn_.isNull() || displayed == displayed_ || displayed.isEmpty() || displayed_.isEmpty())
        return drawn_;
    const double scaleX = double(displayed.width()) / displayed_.width();
    const double scaleY = double(displayed.height()) / displayed_.height();
    const QPoint offset = drawn_.topLeft() - displayed_.topLeft();
    return QRect(displayed.topLeft() + QPoint(qRound(offset.x() * scaleX), qRound(offset.y() * scaleY)),
                 QSize(qRound(drawn_.width() * scaleX), qRound(drawn_.height() * scaleY)));
}

void CropSelection::publish(const ViewGeometry& geometry)
{
    const QRect source = geometry.toSource(inView(geometry));
    const std::lock_guard<std::mutex> lock(mutex_);
    source_ = source;
}

QRect CropSelection::source() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return source_;
}

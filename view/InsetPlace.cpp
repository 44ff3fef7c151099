#include "InsetPlace.h"

#include <algorithm>

namespace {

constexpr int rightExtra = 50;
const QSize usualShape(4, 3);

int kept(int wanted, int start, int low, int high)
{
    return std::clamp(wanted, std::min(low, start), std::max({high, low, start}));
}

} // namespace

QSize insetPlace::size(const QRect& main, const QSize& frame)
{
    const QSize shape = frame.isEmpty() ? usualShape : frame;
    return shape.scaled(main.size() / 3, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

QPoint insetPlace::position(int corner, const QRect& main, const QSize& inset)
{
    const int right = main.x() + main.width() - inset.width() / 2 + rightExtra;
    const int bottom = main.y() + main.height() - inset.height() / 2;
    return {corner == 2 || corner == 3 ? right : main.x(), corner == 1 || corner == 3 ? bottom : main.y()};
}

QPoint insetPlace::dragged(const QPoint& wanted, const QPoint& start, const QSize& inset, const QRect& main)
{
    return {kept(wanted.x(), start.x(), main.x(), main.x() + main.width() - inset.width()),
            kept(wanted.y(), start.y(), main.y(), main.y() + main.height() - inset.height())};
}

QPoint insetPlace::carried(const QPoint& point, const QRect& from, const QRect& to)
{
    if (from.isEmpty())
        return point;
    const QPoint offset = point - from.topLeft();
    return to.topLeft() + QPoint(qRound(double(offset.x()) * to.width() / from.width()),
                                 qRound(double(offset.y()) * to.height() / from.height()));
}

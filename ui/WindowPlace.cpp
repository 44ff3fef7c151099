#include "WindowPlace.h"

#include <algorithm>

QRect windowPlace::inside(const QRect& window, const QRect& area)
{
    const QSize size = window.size().boundedTo(area.size());
    const QPoint last = area.topLeft() + QPoint(area.width() - size.width(), area.height() - size.height());
    return {QPoint(std::clamp(window.x(), area.x(), last.x()), std::clamp(window.y(), area.y(), last.y())),
            size};
}

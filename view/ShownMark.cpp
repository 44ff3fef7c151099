#include "ShownMark.h"

#include "ShotHint.h"
#include "ViewOverlay.h"

#include <QPolygonF>
#include <QRect>

ShownMark::ShownMark(QWidget& view, int below) : hint_(new ShotHint(view, below)) {}

bool ShownMark::set(const PageMark& mark)
{
    const std::lock_guard lock(mutex_);
    const bool areOtherWords = mark.shot != newest_.shot;
    newest_ = mark;
    return areOtherWords;
}

void ShownMark::take(bool isLive)
{
    PageMark newest;
    {
        const std::lock_guard lock(mutex_);
        newest = newest_;
    }
    mark_ = isLive ? newest : PageMark();
    hint_->tell(mark_.shot);
}

void ShownMark::clear()
{
    set({});
    take(false);
}

void ShownMark::paint(QPainter& painter, const QRect& displayed, const QSize& frame) const
{
    if (mark_.corners.isEmpty() || (!mark_.isGood() && !mark_.isFlawed()))
        return;
    constexpr int drawnWidth = 5; // px of the frame, of the line that is drawn into it
    const qreal scale = qreal(displayed.width()) / frame.width();
    QPolygonF corners;
    for (const QPointF& corner : mark_.corners)
        corners << displayed.topLeft() + (corner + QPointF(0.5, 0.5)) * scale;
    overlay::drawPageOutline(painter, corners, mark_.isGood(), scale * drawnWidth + 2);
}

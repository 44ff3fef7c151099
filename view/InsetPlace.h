#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// Where the second camera's picture lies on the main one. All in px of the view that shows both; values
/// without a widget behind them.
namespace insetPlace {

/// The largest size with the shape of `frame` within a third of the main picture each way; at least 1 x 1.
/// Without a frame (empty size) the shape is 4:3.
QSize size(const QRect& main, const QSize& frame);

/// @param corner 0 top left, 1 bottom left, 2 top right, 3 bottom right; others count as 0
/// @return the inset's top left corner. Away from the top left the inset lies half beyond the edge, to the
/// right 50
///         px more.
QPoint position(int corner, const QRect& main, const QSize& inset);

/// Where a drag that began at `start` may put the inset: inside the main picture, but never forced in from
/// where it began, so that it does not jump when it is touched.
QPoint dragged(const QPoint& wanted, const QPoint& start, const QSize& inset, const QRect& main);

/// `point` on the main picture after that went from one place and size to another.
QPoint carried(const QPoint& point, const QRect& from, const QRect& to);

} // namespace insetPlace

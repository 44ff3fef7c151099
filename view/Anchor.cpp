#include "Anchor.h"

#include <QEvent>
#include <QStyle>
#include <QWidget>

Anchor::Anchor(QWidget& child, Qt::Alignment place, const QMargins& free)
    : QObject(&child), child_(child), place_(place), free_(free)
{
    child.installEventFilter(this);
    child.parentWidget()->installEventFilter(this);
}

bool Anchor::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type happened = watched == &child_ ? QEvent::Show : QEvent::Resize;
    // A child without a layout asks its parent for room.
    if (event->type() == happened || event->type() == QEvent::LayoutRequest)
        settle();
    return false;
}

void Anchor::settle()
{
    const QRect room = child_.parentWidget()->rect() - free_;
    const int width = qMin(child_.sizeHint().width(), room.width());
    const int height = child_.hasHeightForWidth() ? child_.heightForWidth(width) : child_.sizeHint().height();
    child_.setGeometry(QStyle::alignedRect(child_.layoutDirection(), place_, QSize(width, height), room));
}

#include "IconButton.h"

#include "Look.h"

#include <QContextMenuEvent>
#include <QGestureEvent>
#include <QMenu>
#include <QPainter>

IconButton::IconButton(QWidget* parent) : QPushButton(parent)
{
    grabGesture(Qt::TapAndHoldGesture);
}

bool IconButton::event(QEvent* event)
{
    if (event->type() == QEvent::Gesture && isDown() && !actions().isEmpty()) {
        const QGesture* hold = static_cast<QGestureEvent*>(event)->gesture(Qt::TapAndHoldGesture);
        if (hold && hold->state() == Qt::GestureFinished) {
            setDown(false);
            showMenu(mapToGlobal(rect().center()));
            return true;
        }
    }
    return QPushButton::event(event);
}

void IconButton::contextMenuEvent(QContextMenuEvent* event)
{
    if (actions().isEmpty())
        return QPushButton::contextMenuEvent(event);
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    showMenu(byKey ? mapToGlobal(rect().center()) : event->globalPos());
}

void IconButton::showMenu(const QPoint& globalPos)
{
    Q_EMIT menuWanted();
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(actions());
    menu->popup(globalPos);
}

void IconButton::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    Look::paintFocusRing(painter, rect());
}

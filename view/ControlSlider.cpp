#include "ControlSlider.h"

#include <QKeyEvent>
#include <QWheelEvent>

void ControlSlider::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

void ControlSlider::mouseDoubleClickEvent(QMouseEvent*)
{
    Q_EMIT resetWanted();
}

void ControlSlider::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete)
        Q_EMIT resetWanted();
    else
        QSlider::keyPressEvent(event);
}

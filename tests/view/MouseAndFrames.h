#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QWidget>

inline QImage plain(const QSize& size, const QColor& colour)
{
    QImage image(size, QImage::Format_RGB888);
    image.fill(colour);
    return image;
}

/// The simulated mouse of the toolkit moves the cursor only; a drag needs the events themselves.
inline void
mouse(QWidget& widget, QEvent::Type type, const QPoint& at, Qt::MouseButton button = Qt::LeftButton)
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type,
                      at,
                      isMove ? Qt::NoButton : button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : button,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

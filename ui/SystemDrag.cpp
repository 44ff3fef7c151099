#include "SystemDrag.h"

#include <QCoreApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace {

/// Without it the toolkit would go on sending every event of the mouse to the pressed widget.
void release(QWindow& handle)
{
    const QPoint global = QCursor::pos();
    QMouseEvent event(QEvent::MouseButtonRelease,
                      handle.mapFromGlobal(global),
                      global,
                      Qt::LeftButton,
                      Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&handle, &event);
}

} // namespace

bool systemDrag::move(QWidget& window)
{
    QWindow* handle = window.windowHandle();
    if (!handle || !handle->startSystemMove())
        return false;
    release(*handle);
    return true;
}

bool systemDrag::resize(QWidget& window, Qt::Edges edges)
{
    QWindow* handle = window.windowHandle();
    if (!handle || !handle->startSystemResize(edges))
        return false;
    release(*handle);
    return true;
}

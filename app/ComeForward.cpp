#include "ComeForward.h"

#include <QApplication>
#include <QWidget>

namespace {

void raise(QWidget& window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

void comeForward(QWidget& window, QWidget& foremost)
{
    raise(window);
    QWidget* const dialog = QApplication::activeModalWidget();
    raise(dialog ? *dialog : foremost);
    QApplication::alert(&window);
}

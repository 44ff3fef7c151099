#include "ComeForward.h"

#include <QApplication>
#include <QWidget>

namespace {

void raise(QWidget& window)
{
    window.setWindowState(window.windowState() & ~(Qt::WindowMinimized | Qt::WindowActive));
    window.show();
    window.raise();
}

} // namespace

void comeForward(QWidget& window)
{
    raise(window);
    // A Wayland client cannot take the keys; the toolkit would only complain.
    if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        window.activateWindow();
}

void comeForward(QWidget& window, QWidget& foremost)
{
    raise(window); // without the keys: two windows that ask for them at once confuse a window manager
    QWidget* const dialog = QApplication::activeModalWidget();
    comeForward(dialog ? *dialog : foremost);
    QApplication::alert(&window);
}

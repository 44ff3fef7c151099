#include "FullScreen.h"

#include "ComeForward.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>

FullScreen::FullScreen(QWidget& widget) : QObject(&widget), widget_(widget)
{
    widget.installEventFilter(this);
}

void FullScreen::toggle()
{
    isOn_ = !isOn_;
    Q_EMIT toggled(isOn_);
    if (isOn_)
        enter();
    else
        leave();
    comeForward(*widget_.window());
    widget_.setFocus(Qt::OtherFocusReason); // for the Escape key
}

void FullScreen::enter()
{
    hostedFlags_ = widget_.windowFlags();
    hostedPlace_ = widget_.geometry();
    QWidget* host = widget_.parentWidget() ? widget_.parentWidget()->window() : nullptr;
    widget_.setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    widget_.winId(); // makes the native window that can be told to stay above its host
    if (host)
        widget_.windowHandle()->setTransientParent(host->windowHandle());
    widget_.showFullScreen();
}

void FullScreen::leave()
{
    widget_.setWindowFlags(hostedFlags_);
    widget_.setWindowState(widget_.windowState() & ~Qt::WindowFullScreen);
    widget_.setGeometry(hostedPlace_);
    widget_.show();
}

bool FullScreen::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Close && isOn_)
        QTimer::singleShot(0, this, [this] {
            if (isOn_)
                toggle();
        });
    return false;
}

#include "ToolBarHost.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

ToolBarHost::ToolBarHost(QWidget* bar, QWidget* view) : QObject(view), bar_(bar), view_(view)
{
    bar_->hide();
    bar_->setCursor(Qt::ArrowCursor);    // not the view's
    view_->setFocusPolicy(Qt::TabFocus); // the way into a bar that is hidden
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { onFocusChanged(now); });
    watch_.setInterval(200);
    connect(&watch_, &QTimer::timeout, this, &ToolBarHost::watchMouse);
}

bool ToolBarHost::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        isUserTyping_ = true;
        break;
    case QEvent::MouseButtonPress:
        isUserTyping_ = false;
        break;
    case QEvent::FocusIn:
        if (watched == view_ || isOfBar(watched))
            noteFocus(event);
        break;
    case QEvent::Show:
        if (isPopupOfBar(qobject_cast<QWidget*>(watched)))
            watch_.start();
        break;
    default:
        break;
    }
    if (watched == view_)
        watchView(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return isDrawing_ && passDragOn(watched, static_cast<QMouseEvent*>(event));
    default:
        return false;
    }
}

void ToolBarHost::setDrawing(bool drawing)
{
    isDrawing_ = drawing;
    isPressed_ = isGripped_ = passesDrag_ = false;
    place();
}

/// @return whether the event has been dealt with here
bool ToolBarHost::passDragOn(QObject* watched, QMouseEvent* event)
{
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || !bar_->isAncestorOf(widget) || widget->window() != view_->window())
        return false;
    if (event->type() == QEvent::MouseButtonPress) {
        isGripped_ = event->button() == Qt::LeftButton;
        pressGlobal_ = event->globalPos();
        return false;
    }
    const bool isFar =
        (event->globalPos() - pressGlobal_).manhattanLength() >= QApplication::startDragDistance();
    if (isGripped_ && isFar && event->type() == QEvent::MouseMove) {
        isGripped_ = false;
        passesDrag_ = true;
        for (QAbstractButton* button : bar_->findChildren<QAbstractButton*>())
            button->setDown(false); // its release is not a click any more
        passOn(QEvent::MouseButtonPress, pressGlobal_);
    }
    if (!passesDrag_)
        return false;
    passOn(event->type(), event->globalPos());
    passesDrag_ = event->type() == QEvent::MouseMove;
    return true;
}

void ToolBarHost::passOn(QEvent::Type type, const QPoint& global)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, view_->mapFromGlobal(global), global, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(view_, &event);
}

void ToolBarHost::watchView(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Enter:
        hasMouse_ = true;
        show();
        break;
    case QEvent::Leave:
        hasMouse_ = false;
        hideIfUnused();
        break;
    case QEvent::Resize:
        place();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        isPressed_ = isDrawing_ && event->type() == QEvent::MouseButtonPress;
        place();
        break;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab)
            takeKeyboard(); // before the view looks for the next control, as hidden ones are left out
        break;
    default:
        break;
    }
}

void ToolBarHost::noteFocus(QEvent* event)
{
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool isByKey =
        reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
    // The toolkit gives the same reason when it takes the focus away from a control that is disabled.
    if (isByKey && isUserTyping_)
        takeKeyboard();
    else if (reason == Qt::MouseFocusReason)
        hasKeyboard_ = false;
}

void ToolBarHost::takeKeyboard()
{
    hasKeyboard_ = true;
    show();
}

void ToolBarHost::onFocusChanged(QWidget* now)
{
    if (!hasKeyboard_ || !now || now == view_ || bar_->isAncestorOf(now))
        return;
    hasKeyboard_ = false;
    hideIfUnused();
}

void ToolBarHost::place()
{
    const QSize wanted = bar_->sizeHint().expandedTo(bar_->minimumSize());
    const int width = qMin(wanted.width(), view_->width());
    // Out of sight it keeps the mouse that was pressed on it; hidden it would not.
    const int top = isPressed_ ? -wanted.height() : 0;
    bar_->setGeometry((view_->width() - width) / 2, top, width, wanted.height());
}

void ToolBarHost::show()
{
    place();
    bar_->show();
    bar_->raise();
}

void ToolBarHost::hideIfUnused()
{
    if (hasKeyboard_ || hasMouse_ || bar_->isHidden() || isPopupOfBar(QApplication::activePopupWidget()))
        return;
    // A control that the mouse has used would hand its focus to whatever comes next in the window.
    if (bar_->isAncestorOf(QApplication::focusWidget()))
        view_->setFocus(Qt::OtherFocusReason);
    bar_->hide();
    watch_.stop();
}

void ToolBarHost::watchMouse()
{
    const bool isMouseInView = view_->rect().contains(view_->mapFromGlobal(QCursor::pos()));
    if (isMouseInView || isPopupOfBar(QApplication::activePopupWidget()))
        return;
    hasMouse_ = false;
    hideIfUnused();
}

bool ToolBarHost::isOfBar(const QObject* object) const
{
    while (object && object != bar_)
        object = object->parent(); // goes on where a popup, a window of its own, ends
    return object;
}

bool ToolBarHost::isPopupOfBar(const QWidget* widget) const
{
    return widget && widget->isWindow() && isOfBar(widget);
}

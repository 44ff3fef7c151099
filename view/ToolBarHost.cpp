#include "ToolBarHost.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QWidget>

ToolBarHost::ToolBarHost(QWidget* bar, QWidget* view) : QObject(view), bar_(bar), view_(view)
{
    bar_->hide();
    bar_->setCursor(Qt::ArrowCursor);    // not the view's
    view_->setFocusPolicy(Qt::TabFocus); // the way into a bar that is hidden
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { onFocusChanged(now); });
    retry_.setInterval(200);
    connect(&retry_, &QTimer::timeout, this, [this] {
        // A popup sends the view a leave event with the mouse still in it, and after it the next enter event
        // comes with the next move.
        if (!view_->rect().contains(view_->mapFromGlobal(QCursor::pos())))
            hideIfUnused();
    });
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
        if (watched == view_ || bar_->isAncestorOf(qobject_cast<QWidget*>(watched)))
            noteFocus(event);
        break;
    default:
        break;
    }
    if (watched == view_)
        watchView(event);
    return false;
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
    bar_->setGeometry((view_->width() - width) / 2, 0, width, wanted.height());
}

void ToolBarHost::show()
{
    retry_.stop();
    place();
    bar_->show();
    bar_->raise();
}

void ToolBarHost::hideIfUnused()
{
    const QWidget* popup = QApplication::activePopupWidget();
    if (popup && bar_->isAncestorOf(popup)) {
        retry_.start();
        return;
    }
    retry_.stop();
    if (hasKeyboard_ || hasMouse_ || bar_->isHidden())
        return;
    // A control that the mouse has used would hand its focus to whatever comes next in the window.
    if (bar_->isAncestorOf(QApplication::focusWidget()))
        view_->setFocus(Qt::OtherFocusReason);
    bar_->hide();
}

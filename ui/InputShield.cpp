#include "InputShield.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>

InputShield::InputShield()
{
    qApp->installEventFilter(this);
}

InputShield::~InputShield()
{
    QCoreApplication::processEvents();
}

bool InputShield::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        return dropKey(*event);
    case QEvent::Close:
        if (!event->spontaneous())
            return false;
        escapeSeen_ = true;
        event->ignore();
        return true;
    case QEvent::KeyRelease:
    case QEvent::MouseButtonRelease:
        // A release that were dropped would leave a slider or a list in the user's hand for good.
        if (auto* button = qobject_cast<QAbstractButton*>(watched))
            button->setDown(false);
        return false;
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool InputShield::dropKey(QEvent& event)
{
    escapeSeen_ = escapeSeen_ || static_cast<QKeyEvent&>(event).key() == Qt::Key_Escape;
    event.accept(); // of an override: no shortcut may take it
    return true;
}

#include "KeyEdit.h"

#include <QKeyEvent>
#include <QKeySequence>

namespace {

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Control:
    case Qt::Key_Shift:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

} // namespace

KeyEdit::KeyEdit(QWidget* parent) : QLineEdit(parent)
{
    setAttribute(Qt::WA_InputMethodEnabled, false); // keys are meant, not what they would compose
    setContextMenuPolicy(Qt::NoContextMenu);
    setAcceptDrops(false);
}

bool KeyEdit::records(const QKeyEvent& event) const
{
    const int key = event.key();
    return !isReadOnly() && key != 0 && key != Qt::Key_unknown && key != Qt::Key_Tab &&
           key != Qt::Key_Backtab && key != Qt::Key_Escape;
}

// Before it becomes a key press here, a combination is offered to the shortcuts and access keys of the
// window.
bool KeyEdit::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && records(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void KeyEdit::keyPressEvent(QKeyEvent* event)
{
    if (!records(*event))
        return QLineEdit::keyPressEvent(event);
    event->accept();
    const int key = event->key(), modifiers = int(event->modifiers() & ~Qt::KeypadModifier);
    if (isModifier(key) || event->isAutoRepeat())
        return;
    if (modifiers == Qt::NoModifier && (key == Qt::Key_Backspace || key == Qt::Key_Delete))
        clear();
    else
        setText(QKeySequence(key | modifiers).toString(QKeySequence::PortableText));
}

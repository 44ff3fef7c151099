#include "EntryName.h"

#include "Look.h"

#include <QFileInfo>
#include <QKeyEvent>

EntryName::EntryName(QWidget* parent) : QLineEdit(parent)
{
    setObjectName(QStringLiteral("entryName"));
    setAccessibleName(tr("New name"));
    setAlignment(Qt::AlignCenter);
    setStyleSheet(QStringLiteral("QLineEdit { background-color: rgb(18, 74, 84); color: rgb(255, 255, 255); "
                                 "border: 2px solid rgb(255, 213, 79);"
                                 " border-radius: 4px; selection-background-color: rgb(107, 176, 205); "
                                 "selection-color: rgb(10, 40, 48); }"));
    hide();
}

void EntryName::begin(const QString& path, const QRect& place)
{
    const QFileInfo file(path);
    path_ = path;
    setText(file.suffix().isEmpty() ? file.fileName() : file.completeBaseName());
    setGeometry(place);
    show();
    setFocus();
    selectAll();
}

void EntryName::refuse()
{
    if (!hasFocus())
        return end();
    selectAll();
}

void EntryName::end()
{
    if (path_.isEmpty())
        return;
    path_.clear();
    const bool hadFocus = hasFocus();
    hide();
    if (hadFocus)
        Q_EMIT ended();
}

void EntryName::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        return end();
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT named(path_, text());
        return;
    default:
        QLineEdit::keyPressEvent(event);
        event->accept(); // none of these keys means the strip
    }
}

void EntryName::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    const bool isLeft =
        event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason;
    if (isLeft && !path_.isEmpty())
        Q_EMIT named(path_, text());
}

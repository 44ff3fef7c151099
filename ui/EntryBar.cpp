#include "EntryBar.h"

#include "IconButton.h"
#include "Look.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int buttonSize = 26; // px; six of them are narrower than an entry
constexpr QSize pictureSize(18, 18);

} // namespace

EntryBar::EntryBar(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("entryBar"));
    setAccessibleName(tr("Change the file"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(3, 2, 3, 2);
    layout->setSpacing(0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    addButton(rename, "entryRename", "rename", tr("Rename (F2)"));
    addButton(turnLeft, "entryTurnLeft", "rotateleft", tr("Turn left (Shift+R)"));
    addButton(turnRight, "entryTurnRight", "rotateright", tr("Turn right (R)"));
    addButton(crop, "entryCrop", "manualDeskew", tr("Crop (C)"));
    addButton(straighten, "entryStraighten", "deskew", tr("Set straight (S)"));
    addButton(undo, "entryUndo", "undo", tr("Undo (Ctrl+Z)"));
    setStyleSheet(QStringLiteral("QPushButton { border: none; border-radius: 4px; background: transparent; }"
                                 "QPushButton:hover { background-color: rgb(8, 115, 140); }"
                                 "QPushButton:pressed { background-color: rgb(14, 62, 70); }"));
    hide();
}

void EntryBar::addButton(Action action, const char* name, const char* picture, const QString& text)
{
    auto* button = new IconButton(this);
    const QIcon icon(QStringLiteral(":/images/common/images/common/%1.png").arg(QLatin1String(picture)));
    button->setObjectName(QLatin1String(name));
    button->setIcon(Look::dimmable(icon, pictureSize));
    button->setIconSize(pictureSize);
    button->setFixedSize(buttonSize, buttonSize);
    button->setFocusPolicy(Qt::NoFocus);
    button->setToolTip(text);
    button->setAccessibleName(text);
    connect(button, &QPushButton::clicked, this, [=] { Q_EMIT chosen(action); });
    layout()->addWidget(button);
    buttons_[std::size_t(action)] = button;
}

void EntryBar::offer(bool isPicture, bool canUndo)
{
    for (const Action action : {turnLeft, turnRight, crop, straighten})
        buttons_[std::size_t(action)]->setVisible(isPicture);
    buttons_[std::size_t(undo)]->setVisible(isPicture || canUndo);
    buttons_[std::size_t(undo)]->setEnabled(canUndo);
    layout()->activate();
}

void EntryBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Look::strip);
    painter.setBrush(QColor(16, 60, 68, 235));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
}

// Between two buttons lies nothing: the entry below is neither chosen nor opened there.
void EntryBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton)
        event->ignore();
}
void EntryBar::mouseReleaseEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}
void EntryBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

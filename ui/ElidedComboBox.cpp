#include "ElidedComboBox.h"

#include "PlainTip.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>

#include <algorithm>

ElidedComboBox::ElidedComboBox(QWidget* parent) : QComboBox(parent)
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(4);
}

void ElidedComboBox::showPopup()
{
    constexpr int frame = 32; // px for the list's margins and scroll bar
    view()->setMinimumWidth(std::max(width(), view()->sizeHintForColumn(0) + frame));
    QComboBox::showPopup();
}

bool ElidedComboBox::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || currentText().isEmpty())
        return QComboBox::event(event);
    const QString tip = plainTip(toolTip() + QStringLiteral(": ") + currentText());
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip, this);
    return true;
}

void ElidedComboBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, field.width() - 4);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

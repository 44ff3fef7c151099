#include "PlateButton.h"

#include "Look.h"

#include <QPainter>
#include <QStyleOptionButton>

namespace {

constexpr int edge = 3;         // px of the button's own colour around the plate
constexpr int besideText = 12;  // px
constexpr int leastHeight = 38; // px; a finger finds it

QColor plateColour(const QStyleOptionButton& option)
{
    if (!(option.state & QStyle::State_Enabled))
        return QColor(150, 186, 194);
    if (option.state & QStyle::State_Sunken)
        return QColor(178, 212, 222);
    return option.state & QStyle::State_MouseOver ? QColor(255, 255, 255) : QColor(226, 241, 245);
}

} // namespace

QSize PlateButton::sizeHint() const
{
    const QSize caption = fontMetrics().size(Qt::TextShowMnemonic, text());
    return {caption.width() + 2 * (edge + besideText), std::max(leastHeight, caption.height() + 4 * edge)};
}

void PlateButton::paintEvent(QPaintEvent*)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().button());
    painter.drawRoundedRect(rect(), 5, 5);
    painter.setBrush(plateColour(option));
    painter.drawRoundedRect(rect().adjusted(edge, edge, -edge, -edge), 3, 3);
    QColor caption = palette().color(QPalette::Active, QPalette::ButtonText);
    if (!isEnabled())
        caption.setAlpha(150);
    painter.setPen(caption);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
    if (hasFocus())
        Look::paintFocusRing(painter, rect());
}

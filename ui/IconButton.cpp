#include "IconButton.h"

#include "Look.h"

#include <QPainter>

void IconButton::paintEvent(QPaintEvent* event)
{
    QPushButton::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    Look::paintFocusRing(painter, rect());
}

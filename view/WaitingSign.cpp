#include "WaitingSign.h"

#include "Anchor.h"
#include "ViewOverlay.h"

#include <QAccessible>
#include <QApplication>
#include <QPainter>

WaitingSign::WaitingSign(QWidget& front)
    : QWidget(&front), text_(tr("Waiting for a picture of the camera. Press Esc to give it up."))
{
    setObjectName(QStringLiteral("WaitingSign"));
    setAccessibleName(text_);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    new Anchor(*this, Qt::AlignCenter);
    show();
    raise();
    QApplication::setOverrideCursor(Qt::BusyCursor);
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

WaitingSign::~WaitingSign()
{
    QApplication::restoreOverrideCursor();
}

QSize WaitingSign::sizeHint() const
{
    const QSize room = parentWidget()->size() - QSize(20, 20);
    return overlay::boxSize(fontMetrics(), room, text_);
}

void WaitingSign::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    overlay::drawBox(painter, rect(), text_);
}

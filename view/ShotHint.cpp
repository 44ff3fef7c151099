#include "ShotHint.h"

#include "Anchor.h"
#include "ViewOverlay.h"

#include <QAccessible>
#include <QPainter>

namespace {

constexpr int sign = 16; // px, the triangle
constexpr int edge = 10; // px around it and the text

} // namespace

ShotHint::ShotHint(QWidget& view, int below) : QWidget(&view)
{
    setObjectName(QStringLiteral("ShotHint"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    lower();
    new Anchor(*this, Qt::AlignBottom | Qt::AlignLeft, {10, Anchor::belowTools, 10, below});
}

QString ShotHint::textOf(MirvakShot shot)
{
    switch (shot) {
    case MIRVAK_SHOT_NO_PAGE:
    case MIRVAK_SHOT_LOOKING:
    case MIRVAK_SHOT_GOOD:
        break;
    case MIRVAK_SHOT_LEAVES_PICTURE:
        return tr("page leaves the picture");
    case MIRVAK_SHOT_MOVING:
        return tr("page is moving");
    case MIRVAK_SHOT_TOO_DARK:
        return tr("too dark");
    case MIRVAK_SHOT_TOO_BLURRED:
        return tr("too blurred");
    case MIRVAK_SHOT_REFLECTION:
        return tr("reflection on the page");
    case MIRVAK_SHOT_NOT_SURE:
        return tr("edge of the page unclear");
    }
    return {};
}

void ShotHint::tell(MirvakShot shot)
{
    const QString text = textOf(shot);
    if (text == text_)
        return;
    text_ = text;
    setAccessibleName(text_);
    setVisible(!text_.isEmpty());
    if (text_.isEmpty())
        return;
    updateGeometry();
    update();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

QSize ShotHint::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {sign + metrics.horizontalAdvance(text_) + 3 * edge, qMax(sign, metrics.height()) + edge};
}

void ShotHint::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    overlay::drawBox(painter, rect());
    overlay::drawWarning(painter, QRect(edge, (height() - sign) / 2, sign, sign));
    painter.setPen(Qt::white);
    painter.drawText(rect().adjusted(sign + 2 * edge, 0, -edge, 0), Qt::AlignVCenter | Qt::AlignLeft, text_);
}

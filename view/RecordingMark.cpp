#include "RecordingMark.h"

#include "Anchor.h"
#include "ViewOverlay.h"

#include <QPainter>

namespace {

constexpr int dot = 12;  // px across
constexpr int edge = 10; // px around the dot and the time

QString clock(int seconds)
{
    const QChar nought = QLatin1Char('0');
    return QStringLiteral("%1:%2").arg(seconds / 60, 2, 10, nought).arg(seconds % 60, 2, 10, nought);
}

} // namespace

RecordingMark::RecordingMark(QWidget& view) : QWidget(&view)
{
    setObjectName(QStringLiteral("RecordingMark"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    new Anchor(*this, Qt::AlignTop | Qt::AlignRight);
}

void RecordingMark::showLength(int seconds)
{
    if (isVisible() && length_ == clock(seconds))
        return;
    length_ = clock(seconds);
    setAccessibleName(tr("Recording, %1").arg(length_));
    updateGeometry();
    show();
    update();
}

QSize RecordingMark::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return {dot + metrics.horizontalAdvance(length_) + 3 * edge, metrics.height() + edge};
}

void RecordingMark::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    overlay::drawBox(painter, rect());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::red);
    painter.drawEllipse(QRect(edge, (height() - dot) / 2, dot, dot));
    painter.setPen(Qt::white);
    painter.drawText(rect().adjusted(dot + 2 * edge, 0, 0, 0), Qt::AlignVCenter, length_);
}

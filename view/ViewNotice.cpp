#include "ViewNotice.h"

#include "ViewOverlay.h"

namespace {

constexpr int shownMs = 5000;

} // namespace

ViewNotice::ViewNotice(QObject* parent) : QObject(parent)
{
    timer_.setObjectName(QStringLiteral("noticeTimer"));
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] { say(QString()); });
}

void ViewNotice::say(const QString& text)
{
    text_ = text;
    if (!text.isEmpty())
        timer_.start(shownMs);
    Q_EMIT changed();
}

void ViewNotice::paint(QPainter& painter, const QRect& view) const
{
    if (!text_.isEmpty())
        overlay::drawNotice(painter, view, text_);
}

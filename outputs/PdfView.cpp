#include "PdfView.h"

#include <QPainter>

namespace {

constexpr int edge = 10;      // px
constexpr int stillMs = 2000; // a slow camera in the dark is not silent yet

} // namespace

PdfView::PdfView(QWidget* parent) : MoveVideoView(parent), mark_(*this, edge)
{
    stillTimer_.setSingleShot(true);
    stillTimer_.setInterval(stillMs);
    connect(&stillTimer_, &QTimer::timeout, this, [this] {
        SetCaption(tr("The picture stands still: the camera delivers no new one."));
        mark_.take(false);
    });
    connect(this, &MoveVideoView::frameTaken, this, &PdfView::watch);
}

void PdfView::SetPageMark(const PageMark& mark)
{
    if (mark_.set(mark))
        QMetaObject::invokeMethod(
            this, [this] { mark_.take(stillTimer_.isActive()); }, Qt::QueuedConnection);
}

void PdfView::watch()
{
    mark_.take(true);
    SetCaption(QString());
    if (isVisible())
        stillTimer_.start();
}

void PdfView::showEvent(QShowEvent* event)
{
    MoveVideoView::showEvent(event);
    watch();
}

void PdfView::hideEvent(QHideEvent* event)
{
    MoveVideoView::hideEvent(event);
    stillTimer_.stop();
    mark_.clear();
}

void PdfView::paintEvent(QPaintEvent* event)
{
    MoveVideoView::paintEvent(event);
    QPainter painter(this);
    mark_.paint(painter, picturePlace(), frameSize());
}

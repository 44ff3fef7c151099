#include "PdfView.h"

namespace {

constexpr int stillMs = 2000; // a slow camera in the dark is not silent yet

} // namespace

PdfView::PdfView(QWidget* parent) : MoveVideoView(parent)
{
    stillTimer_.setSingleShot(true);
    stillTimer_.setInterval(stillMs);
    connect(&stillTimer_, &QTimer::timeout, this, [this] {
        SetCaption(tr("The picture stands still: the camera delivers no new one."));
    });
    connect(this, &MoveVideoView::frameTaken, this, &PdfView::watch);
}

void PdfView::watch()
{
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
}

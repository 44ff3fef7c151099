#pragma once

#include "MoveVideoView.h"
#include "ShownMark.h"

#include <QTimer>

/// The live picture in the multi-page PDF dialog: the newest frame, fitted, painted at the display's pace.
/// One that stands still says so, because what lies under the camera may be another page by now.
class PdfView : public MoveVideoView
{
    Q_OBJECT

public:
    explicit PdfView(QWidget* parent = nullptr);

    /// Thread-safe; as MoveVideoView::SetFrame().
    void SetImageData(const QImage& frame) { SetFrame(frame); }
    /// As VideoView::SetPageMark(): whether the page in the next frame will be good. Thread-safe.
    void SetPageMark(const PageMark& mark);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void watch();

    ShownMark mark_;
    QTimer stillTimer_{this}; ///< runs out when no frame comes any more
};

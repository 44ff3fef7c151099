#pragma once

#include "MoveVideoView.h"

/// The live picture in the multi-page PDF dialog: the newest frame, fitted, painted at the display's pace.
class PdfView : public MoveVideoView
{
    Q_OBJECT

public:
    explicit PdfView(QWidget* parent = nullptr) : MoveVideoView(parent) {}

    /// Thread-safe; as MoveVideoView::SetFrame().
    void SetImageData(const QImage& frame) { SetFrame(frame); }
};

#pragma once

#include "FrameMailbox.h"
#include "FrameScaler.h"

#include <QWidget>

/// Paints the newest frame of the second camera, fitted. GUI thread only, except SetFrame().
class MoveVideoView : public QWidget
{
    Q_OBJECT

public:
    explicit MoveVideoView(QWidget* parent = nullptr);

    /// As VideoView::SetImageData(): the newest frame wins, a null one is ignored, the picture is shared and
    /// not copied. Thread-safe; the calling thread must have stopped before the view is destroyed.
    void SetFrame(const QImage& frame);
    /// Drops the picture, so that the info text shows again. GUI thread only, when no frame comes any more.
    void ClearFrame();
    /// A line over the lower edge of the picture; an empty one takes it away.
    void SetCaption(const QString& caption);
    QSize frameSize() const { return frame_.size(); } ///< px; empty before the first frame

Q_SIGNALS:
    void frameSizeChanged();
    void frameTaken(); ///< a new picture is about to be painted

protected:
    void paintEvent(QPaintEvent* event) override;
    void customEvent(QEvent* event) override;
    QRect picturePlace() const; ///< where the shown picture lies; null without one

private:
    void paintPicture(QPainter& painter);

    FrameMailbox mailbox_;
    QImage frame_; // the shown one
    FrameScaler scaler_;
    QString caption_;
};

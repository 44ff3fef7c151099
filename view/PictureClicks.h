#pragma once

#include <QObject>
#include <QPoint>
#include <QTimer>

class VideoView;

/// Tells of plain clicks on the shown picture: no drag, no second click of a double one, nothing while a
/// rectangle is drawn or the view is frozen. GUI thread only.
class PictureClicks : public QObject
{
    Q_OBJECT

public:
    /// `view` is borrowed. Off at first.
    PictureClicks(VideoView& view, QObject* parent);
    void setEnabled(bool enabled);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// Once it is sure that no second click follows. `place` is where in the picture as shown, from 0 (left,
    /// top) to 1; `at` the same in view coordinates.
    void clicked(const QPointF& place, const QPoint& at);

private:
    void release(const QPoint& at);

    VideoView& view_;
    bool isEnabled_ = false;
    bool isClick_ = false; // what the pressed button would make
    QPoint pressedAt_;
    QPointF place_;
    QTimer secondClick_{this}; // may still come
};

#pragma once

#include <QPoint>
#include <QRect>
#include <QWidget>

class MoveVideoView;

/// The second camera's picture, floating over the main one; the user drags it about. GUI thread only, except
/// SetMvDataFrame().
///
/// It is a child of the preview, not a window of its own: so it moves with the main window and into the full
/// screen, never lies above other programs, cannot take the focus and works where windows may not place
/// themselves. What reaches beyond the preview is cut off.
///
/// All places are in px of the parent. "Main" is the main camera's picture as shown.
class MoveVideoWidget : public QWidget
{
    Q_OBJECT

public:
    /// `parent` is the preview.
    explicit MoveVideoWidget(QWidget* parent);

    /// The newest frame; as VideoView::SetImageData(). Thread-safe.
    void SetMvDataFrame(const QImage& frame);

    /// A line over the picture's lower edge.
    void SetCaption(const QString& caption);

    /// Shows it at a corner of the main picture ("Merge_Pos", as insetPlace::position()), a third as large.
    /// What is no corner counts as the first one, as it does in a capture of both cameras.
    /// It stays there when the main picture changes its place, until the user drags it.
    void showAt(int corner);
    void ShowMvVideoWgt(int x, int y, int w, int h);
    void MoveMvVideoWgt(int x, int y);

    void SetMainPos(const QPoint& pos);
    void SetMainSize(const QSize& size);
    /// Its own place, relative to the main picture's.
    void SetOffsetPos(const QPoint& offset);
    QPoint GetOffsetPos() const { return pos() - main_.topLeft(); }

public Q_SLOTS:
    /// The main picture lies here now: a corner is taken again, a place that the user chose is carried along.
    void followMain(const QRect& main);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void takeCorner();
    QSize fittingSize() const;

    MoveVideoView* view_;
    QRect main_;
    int corner_ = -1; ///< -1: placed by hand
    bool isDragged_ = false;
    QPoint pressPoint_; ///< in the parent
    QPoint posAtPress_;
};

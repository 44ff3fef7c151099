#pragma once

#include <QWidget>

/// One corner of a crop: dragged with the mouse, moved with the arrow keys, with Shift in larger steps. It
/// only tells where it is wanted. GUI thread only.
class CropCorner : public QWidget
{
    Q_OBJECT

public:
    explicit CropCorner(const QString& name, QWidget* parent);

Q_SIGNALS:
    void wanted(const QPointF& centre); ///< px of the parent

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPointF centre() const;
    QPointF grip_; ///< from the centre to where the mouse holds it
};

#pragma once

#include <QSlider>

/// A slider that a double click and the Delete key put back, and that leaves the wheel to what scrolls it.
class ControlSlider : public QSlider
{
    Q_OBJECT

public:
    explicit ControlSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {}

Q_SIGNALS:
    void resetWanted();

protected:
    void wheelEvent(QWheelEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

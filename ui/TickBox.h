#pragma once

#include <QCheckBox>

/// A check box that is all picture: the whole of it takes clicks, and a badge in its corner shows the tick.
class TickBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit TickBox(QWidget* parent = nullptr) : QCheckBox(parent) {}

protected:
    bool hitButton(const QPoint& pos) const override;
    void paintEvent(QPaintEvent* event) override;
};

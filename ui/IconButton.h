#pragma once

#include <QPushButton>

/// A button that is all picture and draws the ring of the keyboard focus over it.
class IconButton : public QPushButton
{
    Q_OBJECT

public:
    explicit IconButton(QWidget* parent = nullptr) : QPushButton(parent) {}

protected:
    void paintEvent(QPaintEvent* event) override;
};

#pragma once

#include <QPushButton>

/// A captioned button whose caption stands on a light plate, so that a dark text colour of its style sheet is
/// easy to read on a dark button. The sheet's colours are those of the button's edge and of the caption.
class PlateButton : public QPushButton
{
    Q_OBJECT

public:
    explicit PlateButton(QWidget* parent = nullptr) : QPushButton(parent) {}

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

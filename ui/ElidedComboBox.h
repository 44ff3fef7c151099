#pragma once

#include <QComboBox>

/// A combo box that may be narrower than its texts: the shown one ends in an ellipsis and stands whole in the
/// tool tip, the list drops down in the width of its longest entry.
class ElidedComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ElidedComboBox(QWidget* parent = nullptr);

    void showPopup() override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

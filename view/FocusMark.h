#pragma once

#include <QWidget>

/// Four corners around the place of the preview that is being focused on. Takes no clicks.
class FocusMark : public QWidget
{
    Q_OBJECT

public:
    explicit FocusMark(QWidget* view);
    void showAt(const QPoint& middle);

protected:
    void paintEvent(QPaintEvent* event) override;
};

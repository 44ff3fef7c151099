#pragma once

#include <QWidget>

/// Says over a window that the program waits for the camera, and how to end that. It takes no room, no focus
/// and no clicks. GUI thread only.
class WaitingSign : public QWidget
{
    Q_OBJECT

public:
    explicit WaitingSign(QWidget& front);
    ~WaitingSign() override;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
};

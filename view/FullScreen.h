#pragma once

#include <QObject>
#include <QRect>

class QWidget;

/// Lets a widget leave its window, cover the whole screen and come back to its place. The window that hosts
/// it keeps its state. Closed by the window manager, the widget comes back too. GUI thread only.
class FullScreen : public QObject
{
    Q_OBJECT

public:
    explicit FullScreen(QWidget& widget);

    bool isOn() const { return isOn_; }
    void toggle();

Q_SIGNALS:
    void toggled(bool on);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void enter();
    void leave();

    QWidget& widget_;
    bool isOn_ = false;
    Qt::WindowFlags hostedFlags_; // what to go back to
    QRect hostedPlace_;
};

#pragma once

#include <QObject>

/// While it lives the user's keys and clicks reach no window, and its end drops those that still wait: what
/// he presses while the program is at work must not happen late. Painting, timers and whatever else goes
/// through the event loop go on. GUI thread only.
class InputShield : public QObject
{
    Q_OBJECT

public:
    InputShield();
    ~InputShield() override;

    /// Whether the user has pressed Escape, or has asked a window to close, which says the same.
    bool isEscapeSeen() const { return escapeSeen_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool dropKey(QEvent& event);

    bool escapeSeen_ = false;
};

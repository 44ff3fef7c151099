#pragma once

#include <QObject>
#include <QTimer>

/// Watches for a card that is laid on the reader, where the reader library can tell and while nobody else
/// uses it. Never waits. GUI thread only.
class CardWatch : public QObject
{
    Q_OBJECT

public:
    enum class State { unknown, none, looking, reading, ready, unreadable };

    explicit CardWatch(QObject* parent);

    void start();
    void stop() { timer_.stop(); }
    State state() const { return state_; }

Q_SIGNALS:
    void stateChanged();
    void cardReady(); ///< it has been read by the library, and is to be fetched

private:
    void look();

    QTimer timer_;
    State state_ = State::unknown;
};

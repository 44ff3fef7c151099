#include "CardWatch.h"

#include "ReadZktCard.h"
#include "hidcard.h"

#include <chrono>
#include <dlfcn.h>

namespace {

constexpr std::chrono::milliseconds interval(150);

/// Looked up by its name: a maker's library in the place of ours does not have it.
int libraryState()
{
    static const auto call = reinterpret_cast<int (*)()>(::dlsym(RTLD_DEFAULT, "h_idcard_state"));
    return call ? call() : -1;
}

CardWatch::State known(int state)
{
    switch (state) {
    case HIDCARD_STATE_NONE:
        return CardWatch::State::none;
    case HIDCARD_STATE_LOOKING:
        return CardWatch::State::looking;
    case HIDCARD_STATE_READING:
        return CardWatch::State::reading;
    case HIDCARD_STATE_READY:
        return CardWatch::State::ready;
    case HIDCARD_STATE_UNREADABLE:
        return CardWatch::State::unreadable;
    default:
        return CardWatch::State::unknown;
    }
}

} // namespace

CardWatch::CardWatch(QObject* parent) : QObject(parent)
{
    timer_.setInterval(interval);
    connect(&timer_, &QTimer::timeout, this, &CardWatch::look);
}

void CardWatch::start()
{
    look();
    timer_.start();
}

void CardWatch::look()
{
    // Another window that reads cards asks for them, and a reader tells of each card but once.
    const State now = ReadZktCard::isShared() ? State::unknown : known(libraryState());
    if (now != std::exchange(state_, now))
        Q_EMIT stateChanged();
    if (now == State::ready)
        Q_EMIT cardReady();
}

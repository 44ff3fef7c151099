#pragma once

#include "Card.h"

#include <optional>

namespace idcard {

/// What a reader does; the numbers are those of h_idcard_state().
enum class ReaderState { none, looking, reading, ready, unreadable };

/// Where cards come from. One thread at a time.
class CardSource
{
public:
    CardSource() = default;
    CardSource(const CardSource&) = delete;
    CardSource& operator=(const CardSource&) = delete;
    virtual ~CardSource() = default;

    /// Whether a reader answers; may wait for half a second. When none does, one line says why.
    virtual bool open() = 0;
    /// The card that lies there. `failure` is the result code when there is none; what is not simply a
    /// missing card prints one line. May wait.
    virtual std::optional<Card> read(int& failure) = 0;
    /// Never waits. Takes the look for a card a step further.
    virtual ReaderState look() = 0;
};

} // namespace idcard

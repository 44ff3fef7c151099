#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace idcard {

using Bytes = std::vector<std::uint8_t>;

/// What a card module is told: command in the high byte, parameter in the low one.
enum class Command : std::uint16_t {
    moduleState = 0x11FF,
    findCard = 0x2001,
    selectCard = 0x2002,
    readBase = 0x3001
};

/// The third status byte of an answer; the others tell nothing.
namespace status {
constexpr int done = 0x90;
constexpr int cardFound = 0x9F;
constexpr int noCard = 0x80;
} // namespace status

struct CardAnswer
{
    int status = 0;
    Bytes data;
};

/// The bytes of a command: AA AA AA 96 69, length (two bytes, of all that follows), command, check byte.
Bytes commandFrame(Command command);

/// Finds answers in what comes from a module, however it is cut into pieces. What stands between frames is
/// skipped; never holds more than one longest frame and the last piece.
class AnswerParser
{
public:
    enum class Found {
        nothing, ///< more bytes are needed
        answer,
        broken ///< a frame with a wrong check byte or an impossible length; it has been skipped
    };

    void add(const std::uint8_t* bytes, size_t count) { buffer_.insert(buffer_.end(), bytes, bytes + count); }
    Found next(CardAnswer& answer);
    void clear() { buffer_.clear(); }

private:
    bool skipToHead();
    Found dropHead();

    Bytes buffer_;
};

} // namespace idcard

#include "CardFrame.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace idcard {
namespace {

constexpr std::uint8_t head[] = {0xAA, 0xAA, 0xAA, 0x96, 0x69};
constexpr size_t headBytes = sizeof head;
constexpr size_t lengthBytes = 2;
constexpr size_t statusBytes = 3;
constexpr size_t checkBytes = 1;
constexpr size_t leastLength = statusBytes + checkBytes;
// The longest answer has a text and a portrait, 1288 in all; further addresses stay far below.
constexpr size_t mostLength = 2048;

template <class At> std::uint8_t check(At begin, At end)
{
    return std::accumulate(begin, end, std::uint8_t{0}, std::bit_xor<>());
}

void append(Bytes& frame, unsigned twoBytes)
{
    frame.push_back(static_cast<std::uint8_t>(twoBytes >> 8));
    frame.push_back(static_cast<std::uint8_t>(twoBytes & 0xFF));
}

} // namespace

Bytes commandFrame(Command command)
{
    Bytes frame(std::begin(head), std::end(head));
    append(frame, sizeof command + checkBytes);
    append(frame, static_cast<unsigned>(command));
    frame.push_back(check(frame.begin() + headBytes, frame.end()));
    return frame;
}

/// Leaves what may be the begin of a head that is still coming.
bool AnswerParser::skipToHead()
{
    const auto found = std::search(buffer_.begin(), buffer_.end(), std::begin(head), std::end(head));
    if (found == buffer_.end()) {
        const size_t keep = std::min(buffer_.size(), headBytes - 1);
        buffer_.erase(buffer_.begin(), buffer_.end() - static_cast<std::ptrdiff_t>(keep));
        return false;
    }
    buffer_.erase(buffer_.begin(), found);
    return true;
}

/// Only the head: the length may lie, so that the next frame begins inside this one.
AnswerParser::Found AnswerParser::dropHead()
{
    buffer_.erase(buffer_.begin(), buffer_.begin() + headBytes);
    return Found::broken;
}

AnswerParser::Found AnswerParser::next(CardAnswer& answer)
{
    if (!skipToHead() || buffer_.size() < headBytes + lengthBytes)
        return Found::nothing;
    const size_t length = static_cast<size_t>(buffer_[headBytes]) << 8 | buffer_[headBytes + 1];
    if (length < leastLength || length > mostLength)
        return dropHead();
    const size_t end = headBytes + lengthBytes + length;
    if (buffer_.size() < end)
        return Found::nothing;
    const auto at = [this](size_t place) { return buffer_.begin() + static_cast<std::ptrdiff_t>(place); };
    if (check(at(headBytes), at(end)) != 0) // with the check byte itself it is 0
        return dropHead();
    const size_t dataBegin = headBytes + lengthBytes + statusBytes;
    answer.status = buffer_[dataBegin - 1];
    answer.data.assign(at(dataBegin), at(end - checkBytes));
    buffer_.erase(buffer_.begin(), at(end));
    return Found::answer;
}

} // namespace idcard

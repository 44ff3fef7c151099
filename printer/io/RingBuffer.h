#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Bytes that wait to be read, first in, first out. Empty when both places are the same, so it holds one byte
/// less than its capacity.
class RingBuffer
{
public:
    explicit RingBuffer(std::size_t capacity) : bytes_(std::max(capacity, least)) {}

    bool isEmpty() const { return read_ == write_; }
    std::size_t room() const { return (read_ + bytes_.size() - write_ - 1) % bytes_.size(); }
    /// Only while there is room.
    void put(std::uint8_t byte)
    {
        bytes_[write_] = byte;
        write_ = (write_ + 1) % bytes_.size();
    }
    /// Only while it is not empty.
    std::uint8_t take()
    {
        const std::uint8_t byte = bytes_[read_];
        read_ = (read_ + 1) % bytes_.size();
        return byte;
    }
    void clear() { read_ = write_; }

private:
    static constexpr std::size_t least = 2; // for one byte

    std::vector<std::uint8_t> bytes_;
    std::size_t read_ = 0, write_ = 0;
};

#pragma once

#include "NZIO.h"
#include "RingBuffer.h"

/// Reads from the device in chunks, so that reading byte by byte is cheap. One thread at a time.
class NZBufferedIO : public virtual NZIO
{
public:
    /// @param capacity of the buffer, bytes  @param chunk what is asked of the device at once, bytes
    NZBufferedIO(std::size_t capacity, std::size_t chunk);

    /// Goes on until all bytes are there, the limit has passed or the stream is closed.
    int BaseRead(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs) override;
    void SkipAvailable() override { ring_.clear(); }

    /// One attempt to get bytes from the device itself; 0 when none came in time.
    virtual int BaseReadAvailable(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs) = 0;

private:
    bool refill(std::size_t timeoutMs);

    RingBuffer ring_;
    std::vector<std::uint8_t> chunk_;
};

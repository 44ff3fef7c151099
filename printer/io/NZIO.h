#pragma once

#include "TimeLimit.h"

#include <cstdint>

/// What operations with an int result return besides a count of bytes.
namespace nzio {

inline constexpr int notOpen = -1;    ///< the stream, or nobody holds one; also what the system refused
inline constexpr int notWritten = -2; ///< a command did not go out whole; a stream that cannot write
inline constexpr int notRead = -3;    ///< nothing could be read any more; a stream that cannot read
inline constexpr int noAnswer = -4;   ///< no status byte before the limit

} // namespace nzio

/// Told of bytes that came or went; `user` is what was given with it.
using NZIOEvent = void (*)(const std::uint8_t* buf, std::size_t len, void* user);

/// A stream of bytes to and from a device, with time limits (milliseconds, by the rule of TimeLimit).
/// Operations with an int result return the count of bytes, which may be smaller than asked for, or one of
/// nzio::. One thread at a time.
class NZIO
{
public:
    NZIO();
    NZIO(const NZIO&) = delete;
    NZIO& operator=(const NZIO&) = delete;
    virtual ~NZIO() = default;

    virtual bool Open(const char* path);
    virtual bool IsOpened() = 0;
    virtual void Close() {}
    /// One attempt to hand bytes to the device, or to get some from it; 0 when it was not ready in time.
    virtual int BaseWrite(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    virtual int BaseRead(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    /// Forgets what has come in and was not read yet.
    virtual void SkipAvailable() {}
    /// The same single attempts, of which the events are told.
    virtual int Write(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    virtual int Read(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    /// Up to and with the terminator, or `max` bytes; waits up to the limit for each of them.
    virtual int
    ReadUntilByte(std::uint8_t* buf, std::size_t max, std::size_t timeoutMs, std::uint8_t terminator);
    /// All of it, in as many attempts as that takes, until one brings nothing.
    virtual int ReadUntilLength(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    virtual int WriteUntilLength(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    /// Sends the command again and again until a byte comes back, each time with a wait of 1000 ms.
    /// @return that byte, 0 to 255
    virtual int QueryOneByteStatus(const std::uint8_t* cmd, std::size_t len, std::size_t timeoutMs);
    /// Sends the command once. @return the count of bytes of the answer
    virtual int QueryResponse(const std::uint8_t* cmd,
                              std::size_t cmdLen,
                              std::uint8_t* resp,
                              std::size_t respLen,
                              std::size_t timeoutMs);
    /// Null takes the event away.
    virtual void SetReadedEvent(NZIOEvent callback, void* user);
    virtual void SetWritedEvent(NZIOEvent callback, void* user);

    /// Stands in for the computer's steady clock.
    void SetClock(SecondsClock clock) { clock_ = std::move(clock); }

protected:
    TimeLimit startLimit(std::size_t timeoutMs) const { return {clock_, timeoutMs}; }

private:
    struct Event
    {
        NZIOEvent callback = nullptr;
        void* user = nullptr;
        void tell(const std::uint8_t* buf, int count) const
        {
            if (callback && count >= 1)
                callback(buf, static_cast<std::size_t>(count), user);
        }
    };

    /// Calls `part(offset)` until `len` bytes are done, nothing goes on, or the limit has passed.
    int repeat(std::size_t len, std::size_t timeoutMs, const std::function<int(std::size_t offset)>& part);

    SecondsClock clock_;
    Event readed_, writed_;
};

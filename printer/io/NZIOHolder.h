#pragma once

#include "NZIO.h"

/// Holds a stream and hands every operation on to it, arguments and results unchanged. Without a stream
/// operations return nzio::notOpen or false, or do nothing. One thread at a time.
class NZIOHolder
{
public:
    NZIOHolder() = default;
    NZIOHolder(const NZIOHolder&) = delete;
    NZIOHolder& operator=(const NZIOHolder&) = delete;
    virtual ~NZIOHolder() = default;

    /// The stream may be a member of whoever gives it: it is used until another one or null is given, and
    /// never deleted here.
    virtual void SetIO(NZIO* io) { io_ = io; }
    virtual NZIO* GetIO() { return io_; }
    virtual bool Open(const char* path);
    virtual bool IsOpened();
    virtual void Close();
    virtual void SkipAvailable();
    virtual int Write(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    virtual int Read(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    virtual int
    ReadUntilByte(std::uint8_t* buf, std::size_t max, std::size_t timeoutMs, std::uint8_t terminator);
    virtual int ReadUntilLength(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    virtual int WriteUntilLength(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);
    virtual int QueryOneByteStatus(const std::uint8_t* cmd, std::size_t len, std::size_t timeoutMs);
    virtual int QueryResponse(const std::uint8_t* cmd,
                              std::size_t cmdLen,
                              std::uint8_t* resp,
                              std::size_t respLen,
                              std::size_t timeoutMs);
    virtual void SetReadedEvent(NZIOEvent callback, void* user);
    virtual void SetWritedEvent(NZIOEvent callback, void* user);

private:
    NZIO* io_ = nullptr;
};

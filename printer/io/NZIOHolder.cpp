#include "NZIOHolder.h"

bool NZIOHolder::Open(const char* path)
{
    return io_ && io_->Open(path);
}

bool NZIOHolder::IsOpened()
{
    return io_ && io_->IsOpened();
}

void NZIOHolder::Close()
{
    if (io_)
        io_->Close();
}

void NZIOHolder::SkipAvailable()
{
    if (io_)
        io_->SkipAvailable();
}

int NZIOHolder::Write(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    return io_ ? io_->Write(buf, len, timeoutMs) : nzio::notOpen;
}

int NZIOHolder::Read(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    return io_ ? io_->Read(buf, len, timeoutMs) : nzio::notOpen;
}

int NZIOHolder::ReadUntilByte(std::uint8_t* buf,
                              std::size_t max,
                              std::size_t timeoutMs,
                              std::uint8_t terminator)
{
    return io_ ? io_->ReadUntilByte(buf, max, timeoutMs, terminator) : nzio::notOpen;
}

int NZIOHolder::ReadUntilLength(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    return io_ ? io_->ReadUntilLength(buf, len, timeoutMs) : nzio::notOpen;
}

int NZIOHolder::WriteUntilLength(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    return io_ ? io_->WriteUntilLength(buf, len, timeoutMs) : nzio::notOpen;
}

int NZIOHolder::QueryOneByteStatus(const std::uint8_t* cmd, std::size_t len, std::size_t timeoutMs)
{
    return io_ ? io_->QueryOneByteStatus(cmd, len, timeoutMs) : nzio::notOpen;
}

int NZIOHolder::QueryResponse(const std::uint8_t* cmd,
                              std::size_t cmdLen,
                              std::uint8_t* resp,
                              std::size_t respLen,
                              std::size_t timeoutMs)
{
    return io_ ? io_->QueryResponse(cmd, cmdLen, resp, respLen, timeoutMs) : nzio::notOpen;
}

void NZIOHolder::SetReadedEvent(NZIOEvent callback, void* user)
{
    if (io_)
        io_->SetReadedEvent(callback, user);
}

void NZIOHolder::SetWritedEvent(NZIOEvent callback, void* user)
{
    if (io_)
        io_->SetWritedEvent(callback, user);
}

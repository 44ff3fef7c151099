#include "NZIO.h"

namespace {

constexpr std::size_t statusWaitMs = 1000;

std::chrono::seconds steadySeconds()
{
    // Not the time of day: that may be set while a picture is on its way.
    return std::chrono::duration_cast<std::chrono::seconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

/// The result that ends a query whose command of `len` bytes was not written whole; 0 when it was.
int failureOf(int written, std::size_t len)
{
    if (written < 0)
        return written;
    return static_cast<std::size_t>(written) < len ? nzio::notWritten : 0;
}

} // namespace

NZIO::NZIO() : clock_(steadySeconds) {}

bool NZIO::Open(const char*)
{
    return false;
}

int NZIO::BaseWrite(const std::uint8_t*, std::size_t, std::size_t)
{
    return IsOpened() ? nzio::notWritten : nzio::notOpen;
}

int NZIO::BaseRead(std::uint8_t*, std::size_t, std::size_t)
{
    return IsOpened() ? nzio::notRead : nzio::notOpen;
}

int NZIO::Write(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    if (!IsOpened())
        return nzio::notOpen;
    const int count = BaseWrite(buf, len, timeoutMs);
    writed_.tell(buf, count);
    return count;
}

int NZIO::Read(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    if (!IsOpened())
        return nzio::notOpen;
    const int count = BaseRead(buf, len, timeoutMs);
    readed_.tell(buf, count);
    return count;
}

int NZIO::repeat(std::size_t len, std::size_t timeoutMs, const std::function<int(std::size_t offset)>& part)
{
    if (!IsOpened())
        return nzio::notOpen;
    const TimeLimit limit = startLimit(timeoutMs);
    std::size_t done = 0;
    while (done < len && IsOpened() && !limit.isOver()) {
        const int count = part(done);
        if (count < 0)
            return count;
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return static_cast<int>(done);
}

int NZIO::ReadUntilByte(std::uint8_t* buf, std::size_t max, std::size_t timeoutMs, std::uint8_t terminator)
{
    bool isFound = false;
    return repeat(max, timeoutMs, [&](std::size_t offset) {
        const int count = isFound ? 0 : Read(buf + offset, 1, timeoutMs);
        isFound = isFound || (count > 0 && buf[offset] == terminator);
        return count;
    });
}

int NZIO::ReadUntilLength(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    return repeat(
        len, timeoutMs, [&](std::size_t offset) { return Read(buf + offset, len - offset, timeoutMs); });
}

int NZIO::WriteUntilLength(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    return repeat(
        len, timeoutMs, [&](std::size_t offset) { return Write(buf + offset, len - offset, timeoutMs); });
}

int NZIO::QueryOneByteStatus(const std::uint8_t* cmd, std::size_t len, std::size_t timeoutMs)
{
    if (!IsOpened())
        return nzio::notOpen;
    SkipAvailable();
    const TimeLimit limit = startLimit(timeoutMs);
    while (!limit.isOver()) {
        if (const int failure = failureOf(WriteUntilLength(cmd, len, timeoutMs), len))
            return failure;
        std::uint8_t status = 0;
        if (Read(&status, 1, statusWaitMs) == 1)
            return status;
    }
    return nzio::noAnswer;
}

int NZIO::QueryResponse(const std::uint8_t* cmd,
                        std::size_t cmdLen,
                        std::uint8_t* resp,
                        std::size_t respLen,
                        std::size_t timeoutMs)
{
    if (!IsOpened())
        return nzio::notOpen;
    SkipAvailable();
    if (const int failure = failureOf(WriteUntilLength(cmd, cmdLen, timeoutMs), cmdLen))
        return failure;
    return ReadUntilLength(resp, respLen, timeoutMs);
}

void NZIO::SetReadedEvent(NZIOEvent callback, void* user)
{
    readed_ = {callback, user};
}

void NZIO::SetWritedEvent(NZIOEvent callback, void* user)
{
    writed_ = {callback, user};
}

#pragma once

#include "NZIO.h"
#include "UniqueFd.h"

/// Waits for a file descriptor with select() and reads or writes what it is ready for. One thread at a time.
class SelectIOBase_linux : public virtual NZIO
{
public:
    ~SelectIOBase_linux() override;

    bool IsOpened() override { return fd_.isValid(); }
    /// What the device has taken but not yet passed on gets up to a second for that.
    void Close() override;
    /// Waits for room and writes as much of it as there is room for. @return bytes; 0 when there was no room
    /// in time, -1 when the device is gone
    int BaseWrite(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs) override;
    /// The same for reading.
    int BaseReadAvailable(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs);

protected:
    /// Takes a descriptor that does not block, in place of the present one. @return false for none, or for
    /// one that select() cannot wait for
    bool adopt(mirvak::UniqueFd fd);

private:
    mirvak::UniqueFd fd_;
};

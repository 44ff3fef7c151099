#pragma once

#include "NZBufferedIO.h"
#include "SelectIOBase_linux.h"

/// A device file, such as that of a USB printer. One thread at a time.
class NZUsbIO_linux : public NZBufferedIO, public SelectIOBase_linux
{
public:
    /// Both in bytes: of the buffer for reading, and what is asked of the device at once.
    NZUsbIO_linux(std::size_t capacity, std::size_t chunk) : NZBufferedIO(capacity, chunk) {}

    /// For reading and writing. A stream that is open is closed first. @return whether it is open now
    bool Open(const char* path) override;
    int BaseReadAvailable(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs) override;
};

#include "NZUsbIO_linux.h"

#include <fcntl.h>

bool NZUsbIO_linux::Open(const char* path)
{
    SkipAvailable(); // what another device has said
    // Not blocking: a printer without paper would hold a write for as long as it likes, whatever its time
    // limit.
    return adopt(mirvak::UniqueFd(open(path, O_RDWR | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)));
}

int NZUsbIO_linux::BaseReadAvailable(std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    return SelectIOBase_linux::BaseReadAvailable(buf, len, timeoutMs);
}

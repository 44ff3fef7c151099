#pragma once

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/ioctl.h>

namespace mirvak {

/// ioctl() that goes on after a signal. 0, or -1 with errno.
inline int videoIoctl(int fd, unsigned long request, void* argument)
{
    int result = 0;
    do {
        result = ioctl(fd, request, argument);
    } while (result == -1 && errno == EINTR);
    return result;
}

/// One line on standard error with the failed call and errno.
inline void complain(const char* device, const char* call)
{
    std::fprintf(stderr, "%s: %s: %s\n", device, call, std::strerror(errno));
}

} // namespace mirvak

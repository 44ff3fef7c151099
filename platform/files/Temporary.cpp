#include "Temporary.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>

namespace mirvak {

Lock lockTemporary(int file)
{
    // A byte that no file reaches: some network file systems let nobody else write where a lock lies, and the
    // temporary may be filled through another handle.
    struct flock byte
    {
    };
    byte.l_type = F_WRLCK;
    byte.l_whence = SEEK_SET;
    byte.l_start = std::numeric_limits<off_t>::max() - 1;
    byte.l_len = 1;
    if (::fcntl(file, F_OFD_SETLK, &byte) == 0)
        return Lock::held;
    return errno == EAGAIN || errno == EACCES ? Lock::heldByAnother : Lock::unknown;
}

} // namespace mirvak

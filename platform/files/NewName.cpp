#include "NewName.h"

#include "UniqueFd.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace mirvak {

namespace {

// For file systems that know neither a rename that refuses nor a second name for a file. Whoever makes the
// empty file has the name; a crash between the two steps leaves it empty.
int moveOverOwnFile(const std::string& from, const std::string& to)
{
    if (!UniqueFd(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)).isValid())
        return errno;
    if (std::rename(from.c_str(), to.c_str()) == 0)
        return 0;
    const int error = errno;
    ::unlink(to.c_str());
    return error;
}

} // namespace

int moveToNewName(const std::string& from, const std::string& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    if (::link(from.c_str(), to.c_str()) == 0) {
        ::unlink(from.c_str());
        return 0;
    }
    return errno == EEXIST ? EEXIST : moveOverOwnFile(from, to);
}

} // namespace mirvak

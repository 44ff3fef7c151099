#include "LeftOvers.h"

#include "Temporary.h"
#include "UniqueFd.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace mirvak {

namespace {

bool isTemporary(std::string_view name)
{
    if (name.size() <= temporaryBegin.size() + temporaryEnd.size() ||
        name.substr(0, temporaryBegin.size()) != temporaryBegin ||
        name.substr(name.size() - temporaryEnd.size()) != temporaryEnd)
        return false;
    name.remove_prefix(temporaryBegin.size());
    name.remove_suffix(temporaryEnd.size());
    return name.find_first_not_of("0123456789-") == std::string_view::npos;
}

bool isRegular(int folder, const char* name)
{
    struct stat about
    {
    };
    return ::fstatat(folder, name, &about, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(about.st_mode);
}

// The lock is held until the name is gone: a writer that has just made the file then notices, and makes
// another.
void removeUnowned(int folder, const char* name)
{
    // Some network file systems lock only what is open for writing.
    const UniqueFd file(::openat(folder, name, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file.isValid() || lockTemporary(file.get()) != Lock::held || ::unlinkat(folder, name, 0) == 0)
        return;
    char text[128];
    std::fprintf(stderr, "cannot remove the left-over %s: %s\n", name, strerror_r(errno, text, sizeof text));
}

} // namespace

void removeLeftOvers(const std::string& folder)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), &::closedir);
    if (!entries)
        return;
    const int handle = ::dirfd(entries.get());
    while (const dirent* entry = ::readdir(entries.get())) {
        if (isTemporary(entry->d_name) && isRegular(handle, entry->d_name))
            removeUnowned(handle, entry->d_name);
    }
}

} // namespace mirvak

#include "NZDirectoryList_linux.h"

#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace {

constexpr std::size_t pathAtMost = 300;

struct CloseDirectory
{
    void operator()(DIR* directory) const { closedir(directory); }
};

bool isWanted(const char* name, const char* const* prefixes)
{
    if (!prefixes)
        return true;
    for (; *prefixes; ++prefixes)
        if (std::strncmp(name, *prefixes, std::strlen(*prefixes)) == 0)
            return true;
    return false;
}

bool isDirectory(DIR* in, const dirent& entry)
{
    struct stat status = {};
    if (entry.d_type != DT_UNKNOWN) // not every file system tells
        return entry.d_type == DT_DIR;
    return fstatat(dirfd(in), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

int NZDirectoryList_linux::ListFiles(
    const char* dir, const char* const* prefixes, char* buf, std::size_t size, std::size_t* total)
{
    int count = 0;
    std::size_t used = 0;
    const std::unique_ptr<DIR, CloseDirectory> directory(opendir(dir));
    while (const dirent* entry = directory ? readdir(directory.get()) : nullptr) {
        if (!isWanted(entry->d_name, prefixes) || isDirectory(directory.get(), *entry))
            continue;
        char path[pathAtMost];
        std::snprintf(path, sizeof path, "%s/%s", dir, entry->d_name);
        const std::size_t length = std::strlen(path);
        if (size - used <= length)
            break;
        std::memcpy(buf + used, path, length + 1);
        used += length + 1;
        ++count;
    }
    if (total)
        *total = used + static_cast<std::size_t>(count);
    return count;
}

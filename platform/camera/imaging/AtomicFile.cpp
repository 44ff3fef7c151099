#include "AtomicFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace mirvak {

namespace {

std::string folderOf(const std::string& path)
{
    const size_t slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// Independent of the final name, which may already have the greatest length a file name can have.
std::string nextTemporaryName()
{
    static std::atomic<unsigned> counter{0};
    return ".lumro-" + std::to_string(getpid()) + "-" + std::to_string(counter++) + ".tmp";
}

// A rename survives a power cut only when the folder is synced too. File systems that cannot do that for a
// folder say so with an error that changes nothing for the file.
void syncFolder(const std::string& folder)
{
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return;
    ::fsync(fd);
    ::close(fd);
}

} // namespace

AtomicFile::AtomicFile(std::string path) : path_(std::move(path)), folder_(folderOf(path_))
{
    if (!open())
        fail();
}

AtomicFile::~AtomicFile()
{
    if (fd_ >= 0)
        ::close(fd_);
    if (!temporary_.empty())
        ::unlink(temporary_.c_str());
}

bool AtomicFile::open()
{
    // A name left over by a killed process of the same number is skipped, not overwritten.
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::string name = folder_ + "/" + nextTemporaryName();
        fd_ = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd_ >= 0) {
            temporary_ = std::move(name);
            return true;
        }
        if (errno != EEXIST)
            return false;
    }
    return false;
}

bool AtomicFile::write(const void* data, size_t bytes)
{
    const char* next = static_cast<const char*>(data);
    while (!failed_ && bytes > 0) {
        const ssize_t written = ::write(fd_, next, bytes);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return fail();
        next += written;
        bytes -= static_cast<size_t>(written);
    }
    return !failed_;
}

bool AtomicFile::commit()
{
    if (failed_)
        return false;
    if (::fsync(fd_) != 0)
        return fail();
    const int closed = ::close(fd_); // network file systems report a full disk here
    fd_ = -1;
    if (closed != 0 || ::rename(temporary_.c_str(), path_.c_str()) != 0)
        return fail();
    temporary_.clear();
    syncFolder(folder_);
    return true;
}

bool AtomicFile::fail()
{
    char text[128];
    std::fprintf(stderr, "cannot write %s: %s\n", path_.c_str(), strerror_r(errno, text, sizeof text));
    failed_ = true;
    return false;
}

} // namespace mirvak

#include "AtomicFile.h"

#include "NewName.h"
#include "Temporary.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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
    return std::string(temporaryBegin) + std::to_string(getpid()) + "-" + std::to_string(counter++) +
           std::string(temporaryEnd);
}

// False when another process, which took the file for a left-over, was faster than the lock.
bool own(int file, const std::string& name)
{
    return lockTemporary(file) != Lock::heldByAnother && ::access(name.c_str(), F_OK) == 0;
}

// A rename survives a power cut only when the folder is synced too. File systems that cannot do that for a
// folder say so with an error that changes nothing for the file.
void syncFolder(const std::string& folder)
{
    const UniqueFd handle(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.isValid())
        ::fsync(handle.get());
}

} // namespace

AtomicFile::AtomicFile(std::string path, IfTaken ifTaken, Readers readers)
    : path_(std::move(path)), folder_(folderOf(path_)), ifTaken_(ifTaken), readers_(readers)
{
    if (!open())
        fail(errno);
}

AtomicFile::~AtomicFile()
{
    if (!temporary_.empty())
        ::unlink(temporary_.c_str());
}

bool AtomicFile::open()
{
    const mode_t mode = readers_ == Readers::owner ? S_IRUSR | S_IWUSR : 0666;
    // A name left over by a killed process of the same number is skipped, not overwritten.
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::string name = folder_ + "/" + nextTemporaryName();
        file_ = UniqueFd(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (!file_.isValid() && errno != EEXIST)
            return false;
        if (file_.isValid() && own(file_.get(), name)) {
            temporary_ = std::move(name);
            return true;
        }
    }
    return false;
}

bool AtomicFile::write(const void* data, size_t bytes)
{
    const char* next = static_cast<const char*>(data);
    while (!failed_ && bytes > 0) {
        const ssize_t written = ::write(file_.get(), next, bytes);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return fail(errno);
        next += written;
        bytes -= static_cast<size_t>(written);
    }
    return !failed_;
}

// Network file systems report a full disk when a file is closed. A second handle is closed for that: the
// first keeps the lock until the file has its name.
bool AtomicFile::flush()
{
    if (::fsync(file_.get()) != 0)
        return false;
    const int second = ::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0);
    return second >= 0 && ::close(second) == 0;
}

int AtomicFile::rename()
{
    if (ifTaken_ == IfTaken::refuse)
        return moveToNewName(temporary_, path_);
    return std::rename(temporary_.c_str(), path_.c_str()) == 0 ? 0 : errno;
}

AtomicFile::Commit AtomicFile::commit()
{
    if (failed_)
        return Commit::failed;
    const int error = flush() ? rename() : errno;
    if (ifTaken_ == IfTaken::refuse && error == EEXIST) {
        failed_ = true;
        return Commit::taken;
    }
    if (error != 0) {
        fail(error);
        return Commit::failed;
    }
    temporary_.clear();
    file_.reset();
    syncFolder(folder_);
    return Commit::done;
}

bool AtomicFile::fail(int error)
{
    char text[128];
    const std::string& place = readers_ == Readers::owner ? folder_ : path_;
    std::fprintf(stderr, "cannot write %s: %s\n", place.c_str(), strerror_r(error, text, sizeof text));
    failed_ = true;
    return false;
}

} // namespace mirvak

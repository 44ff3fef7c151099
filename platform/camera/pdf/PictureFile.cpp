#include "PictureFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace mirvak {

namespace {

constexpr off_t largest = 4 * maxPixels; // bytes; what the largest picture takes without compression

class Reader
{
public:
    explicit Reader(const std::string& path)
        // Without O_NONBLOCK a pipe without a writer would stop the program here.
        : path_(path), fd_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
        if (fd_ < 0)
            fail(errno);
    }
    ~Reader() { ::close(fd_); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    FileState state() const
    {
        struct stat about
        {
        };
        if (::fstat(fd_, &about) != 0)
            fail(errno);
        if (!S_ISREG(about.st_mode))
            fail(S_ISDIR(about.st_mode) ? EISDIR : EINVAL);
        if (about.st_size > largest)
            fail(EFBIG);
        return {about.st_dev, about.st_ino, about.st_size, about.st_mtim};
    }
    /// As many of the bytes as there are.
    void fill(Bytes& bytes) const
    {
        size_t filled = 0;
        while (filled < bytes.size()) {
            const ssize_t count = ::read(fd_, bytes.data() + filled, bytes.size() - filled);
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                fail(errno);
            if (count == 0)
                break;
            filled += static_cast<size_t>(count);
        }
        bytes.resize(filled);
    }

private:
    [[noreturn]] void fail(int error) const
    {
        char text[128];
        throw std::runtime_error(path_ + ": " + strerror_r(error, text, sizeof text));
    }

    const std::string& path_;
    int fd_;
};

} // namespace

bool operator==(const FileState& a, const FileState& b)
{
    return a.device == b.device && a.node == b.node && a.size == b.size &&
           a.changed.tv_sec == b.changed.tv_sec && a.changed.tv_nsec == b.changed.tv_nsec;
}

PictureFile PictureFile::read(const std::string& path)
{
    const Reader reader(path);
    PictureFile file;
    file.state = reader.state();
    file.bytes.resize(static_cast<size_t>(file.state.size));
    reader.fill(file.bytes);
    return file;
}

} // namespace mirvak

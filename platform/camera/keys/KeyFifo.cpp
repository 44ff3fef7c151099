#include "KeyFifo.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace mirvak {
namespace {

UniqueFd openFifo(const char* path)
{
    if (mkfifo(path, 0600) != 0 && errno != EEXIST)
        return {};
    // Open for writing too: with a writer left, the pipe never reports its end between two presses.
    UniqueFd fd(open(path, O_RDWR | O_NONBLOCK | O_CLOEXEC));
    struct stat status
    {
    };
    if (fd.isValid() && (fstat(fd.get(), &status) != 0 || !S_ISFIFO(status.st_mode))) {
        errno = EEXIST;
        return {};
    }
    return fd;
}

} // namespace

KeyFifo::KeyFifo(const std::filesystem::path& path) : fd_(openFifo(path.c_str()))
{
    if (!fd_.isValid())
        std::fprintf(stderr, "no keys of the virtual desk: %s: %s\n", path.c_str(), std::strerror(errno));
}

void KeyFifo::read(const std::function<void(int)>& press)
{
    char buffer[256];
    ssize_t count = 0;
    while ((count = ::read(fd_.get(), buffer, sizeof buffer)) > 0) {
        for (ssize_t i = 0; i < count; ++i)
            take(buffer[i], press);
    }
}

void KeyFifo::take(char character, const std::function<void(int)>& press)
{
    constexpr size_t longestLine = 32;
    if (character != '\n') {
        overlong_ = overlong_ || line_.size() == longestLine;
        if (!overlong_)
            line_ += character;
        return;
    }
    int key = 0;
    const char* const end = line_.data() + line_.size();
    const auto [rest, error] = std::from_chars(line_.data(), end, key);
    const bool isNumber = !overlong_ && error == std::errc() && (rest == end || *rest == '\r');
    line_.clear();
    overlong_ = false;
    if (isNumber)
        press(key);
}

} // namespace mirvak

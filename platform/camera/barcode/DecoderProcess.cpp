#include "DecoderProcess.h"

#include "FreshSignals.h"
#include "SpawnFiles.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>

extern char** environ;

namespace mirvak {

namespace {

// A descriptor that lies above those that the helper's own are copied to.
UniqueFd aboveHelpers(UniqueFd fd)
{
    return fd.isValid() ? UniqueFd(fcntl(fd.get(), F_DUPFD_CLOEXEC, helper::pictureFd + 1)) : std::move(fd);
}

} // namespace

DecoderProcess::DecoderProcess(std::string program, std::size_t pictureBytes)
    : program_(std::move(program)), pictureBytes_(pictureBytes)
{
    memory_ = aboveHelpers(UniqueFd(memfd_create("pictures", MFD_CLOEXEC)));
    if (!memory_.isValid() || ftruncate(memory_.get(), static_cast<off_t>(pictureBytes)) != 0)
        return;
    void* start = mmap(nullptr, pictureBytes, PROT_READ | PROT_WRITE, MAP_SHARED, memory_.get(), 0);
    if (start != MAP_FAILED)
        mapped_ = cv::Mat(1, static_cast<int>(pictureBytes), CV_8UC1, start);
}

DecoderProcess::~DecoderProcess()
{
    stop();
    if (mapped_.data)
        munmap(mapped_.data, pictureBytes_);
}

cv::Mat DecoderProcess::canvas(cv::Size size)
{
    const bool fits =
        size.width > 0 && size.height > 0 && size_t(size.width) * size_t(size.height) <= size_t(mapped_.cols);
    return fits ? cv::Mat(size, CV_8UC1, mapped_.data) : cv::Mat();
}

bool DecoderProcess::start()
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return false;
    socket_ = UniqueFd(ends[0]);
    const UniqueFd theirs = aboveHelpers(UniqueFd(ends[1]));
    const SpawnFiles files({{theirs.get(), helper::socketFd}, {memory_.get(), helper::pictureFd}},
                           SpawnFiles::Errors::drop);
    const FreshSignals signals;
    char* arguments[] = {program_.data(), nullptr};
    const int error = posix_spawn(&pid_, program_.c_str(), files.get(), signals.get(), arguments, environ);
    if (error == 0)
        return true;
    std::fprintf(stderr, "barcodes: %s: %s\n", program_.c_str(), std::strerror(error));
    pid_ = -1;
    socket_.reset();
    return false;
}

bool DecoderProcess::ask(const helper::Request& request)
{
    if (!mapped_.data || (pid_ < 0 && !start()))
        return false;
    // To one that died in the meantime nothing can be sent: receive() will find that out.
    send(socket_.get(), &request, sizeof request, MSG_NOSIGNAL);
    return true;
}

DecoderProcess::News DecoderProcess::receive(helper::Reading& reading, std::string& bytes)
{
    if (pid_ < 0)
        return News::died;
    packet_.resize(sizeof reading + helper::textBytesAtMost);
    const ssize_t length = recv(socket_.get(), packet_.data(), packet_.size(), MSG_DONTWAIT);
    if (length < 0 && (errno == EAGAIN || errno == EINTR))
        return News::none;
    if (length < static_cast<ssize_t>(sizeof reading)) {
        stop();
        return News::died;
    }
    std::memcpy(&reading, packet_.data(), sizeof reading);
    if (reading.kind == helper::Reading::end)
        return News::end;
    bytes.assign(packet_, sizeof reading, static_cast<size_t>(length) - sizeof reading);
    if (reading.symbology > lastSymbology || reading.byteCount != bytes.size()) {
        stop(); // it has lost its way
        return News::died;
    }
    return News::reading;
}

void DecoderProcess::stop()
{
    if (pid_ < 0)
        return;
    kill(pid_, SIGKILL);
    while (waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    socket_.reset();
}

} // namespace mirvak

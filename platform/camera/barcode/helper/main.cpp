// Decodes the pictures that the camera library puts into shared memory. A process of its own, because the
// decoders may end it: what they do to a damaged picture then costs that picture and nothing else. Ends with
// its socket.
#include "Messages.h"
#include "ZBarDecoder.h"
#include "ZXingDecoder.h"

#include <cstdio>
#include <exception>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace mirvak::helper {

namespace {

// Whatever a decoder runs into ends within bounds, and quickly: no dump of memory is written.
void limitMyself()
{
    constexpr rlim_t processorSeconds = 60;
    const auto limit = [](__rlimit_resource resource, rlim_t value) {
        const rlimit both{value, value};
        setrlimit(resource, &both);
    };
    limit(RLIMIT_CPU, processorSeconds);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // they keep a map of all addresses
    constexpr rlim_t addressBytes = rlim_t(1) << 30;
    limit(RLIMIT_AS, addressBytes);
#endif
    limit(RLIMIT_CORE, 0);
    prctl(PR_SET_DUMPABLE, 0);
}

/// The shared memory of the pictures, read only.
class Memory
{
public:
    Memory()
    {
        struct stat info = {};
        if (fstat(pictureFd, &info) != 0 || info.st_size <= 0)
            return;
        size_ = static_cast<size_t>(info.st_size);
        void* start = mmap(nullptr, size_, PROT_READ, MAP_SHARED, pictureFd, 0);
        start_ = start == MAP_FAILED ? nullptr : static_cast<unsigned char*>(start);
    }
    bool holds(int width, int height) const
    {
        return start_ && width > 0 && height > 0 && size_t(width) * size_t(height) <= size_;
    }
    const unsigned char* pixels() const { return start_; }

private:
    unsigned char* start_ = nullptr; // until the process ends
    size_t size_ = 0;
};

void answer(const Request& request, const Picture& picture, ZBarDecoder& bars)
{
    const Answers answers;
    try {
        if (request.decoders & Decoders::bars)
            bars.read(picture, request.step, answers);
        if (request.decoders & Decoders::matrices)
            readMatrices(picture, (request.decoders & Decoders::evenly) != 0, answers);
        if (request.decoders & Decoders::oneBar)
            readOneBar(picture, answers);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "mirvakcodes: %s\n", failure.what());
    }
    answers.end();
}

int serve()
{
    limitMyself();
    const Memory memory;
    ZBarDecoder bars;
    Request request{};
    while (recv(socketFd, &request, sizeof request, 0) == static_cast<ssize_t>(sizeof request)) {
        if (!memory.holds(request.width, request.height) || request.step < 1)
            return 1;
        answer(request, {memory.pixels(), request.width, request.height}, bars);
    }
    return 0;
}

} // namespace

} // namespace mirvak::helper

int main()
{
    return mirvak::helper::serve();
}

#include "PrinterStream.h"

#include "Job.h"

namespace {

constexpr std::size_t patienceMs = 200; // in which a cancel is noticed

} // namespace

int PrinterStream::BaseWrite(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs)
{
    for (;;) {
        const std::size_t part = std::min(timeoutMs, patienceMs);
        const int count = NZUsbIO_linux::BaseWrite(buf, len, part);
        timeoutMs -= part;
        if (count != 0 || timeoutMs == 0 || (job_ && job_->isStopped()))
            return count;
    }
}

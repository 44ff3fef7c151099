#include "Streamer.h"

#include <algorithm>

namespace lab {

using namespace std::chrono_literals;

Streamer::Streamer(const CameraModel& model, const Pictures& pictures, VhciPort& port)
    : model_(model), pictures_(pictures), port_(port), thread_([this] { run(); })
{
}

Streamer::~Streamer()
{
    ending_ = true;
    transfers_.interrupt();
    thread_.join();
}

void Streamer::start(const StreamChoice& choice)
{
    {
        const std::lock_guard lock(mutex_);
        choice_ = choice;
    }
    transfers_.interrupt();
}

StreamChoice Streamer::choice() const
{
    const std::lock_guard lock(mutex_);
    return choice_;
}

void Streamer::run()
{
    auto due = std::chrono::steady_clock::now();
    for (unsigned n = 0; !ending_; ++n) {
        const unsigned epoch = transfers_.epoch(); // before choice(): a choice made later voids this frame
        const StreamChoice stream = choice();
        const Bytes bytes = payload(stream, n);
        due = std::max(due + stream.interval * 100ns, std::chrono::steady_clock::now());
        std::this_thread::sleep_until(due);
        sendPayload(bytes, epoch);
    }
}

Bytes Streamer::payload(const StreamChoice& choice, unsigned n) const
{
    constexpr std::uint8_t headerEnds = 0x80, frameEnds = 0x02;
    const std::uint8_t frameId = n % 2; // tells one frame from the next
    const FrameSize size = model_.sizes[choice.frameIndex];
    Bytes bytes{2, std::uint8_t(headerEnds | frameEnds | frameId)};
    append(bytes, choice.format == 1 ? pictures_.jpeg(size, n) : Pictures::yuyv(size, n));
    return bytes;
}

// Spread over as many transfers as it takes; a short transfer ends it.
void Streamer::sendPayload(const Bytes& payload, unsigned epoch)
{
    std::size_t sent = 0;
    bool complete = false;
    while (!complete && epoch == transfers_.epoch()) {
        transfers_.serve(epoch, 1000ms, [&](const Urb& urb) {
            const std::size_t part = std::min<std::size_t>(urb.length, payload.size() - sent);
            port_.send(urb, payload.data() + sent, part);
            sent += part;
            complete = part < urb.length;
        });
    }
}

} // namespace lab

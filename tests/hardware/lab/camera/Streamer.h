#pragma once

#include "Negotiation.h"
#include "Pictures.h"
#include "TransferQueue.h"

#include <atomic>
#include <thread>

namespace lab {

/// Plays the pictures into the streaming endpoint at the pace that was agreed on.
class Streamer
{
public:
    Streamer(const CameraModel& model, const Pictures& pictures, VhciPort& port);
    ~Streamer();

    TransferQueue& transfers() { return transfers_; }
    /// From the next frame on. A frame that is half sent is broken off.
    void start(const StreamChoice& choice);
    /// Breaks off the present frame: the host has reset the endpoint.
    void restart() { transfers_.interrupt(); }

private:
    void run();
    StreamChoice choice() const;
    Bytes payload(const StreamChoice& choice, unsigned n) const;
    void sendPayload(const Bytes& payload, unsigned epoch);

    const CameraModel& model_;
    const Pictures& pictures_;
    VhciPort& port_;
    TransferQueue transfers_;
    mutable std::mutex mutex_; ///< guards choice_
    StreamChoice choice_;
    std::atomic<bool> ending_{false};
    std::thread thread_; ///< last: it uses everything above
};

} // namespace lab

#pragma once

#include "CameraKeys.h"
#include "KeyFifo.h"
#include "WakeEvent.h"

#include <optional>
#include <thread>

namespace mirvak {

/// Listens on a thread of its own to the keys of all cameras and of the virtual desk. start() and stop() are
/// called by one thread.
class KeyListener
{
public:
    using Press = std::function<void(int key)>;

    ~KeyListener() { stop(); }

    /// `cameraKey` and `deskKey` are called on the listener's thread. Without `fifo` the desk has no keys.
    /// False when there is nothing to listen to, or when it listens already.
    bool start(Press cameraKey, Press deskKey, const std::optional<std::filesystem::path>& fifo);
    /// Returns after the last press has been handled. Does nothing when called from a press.
    void stop();

private:
    void run();
    void listenOnce();

    Press cameraKey_;
    Press deskKey_;
    WakeEvent stop_;
    std::unique_ptr<CameraKeys> cameraKeys_;
    std::optional<KeyFifo> fifo_;
    std::thread thread_; // last: it uses everything above
};

} // namespace mirvak

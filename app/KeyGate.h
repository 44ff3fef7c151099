#pragma once

#include <atomic>

/// Lets one press of a camera's key through at a time: what comes while one waits for the window or is served
/// is dropped, and so is one that had to wait for a capture, which may have taken seconds.
class KeyGate
{
public:
    /// Listener's thread. False when the press is to be dropped. `captures` is how many the window has made.
    bool enter(unsigned captures)
    {
        if (busy_.exchange(true))
            return false;
        capturesBefore_ = captures;
        return true;
    }
    /// GUI thread, before the press is served. False when a capture has been made since.
    bool isFresh(unsigned captures) const { return !busy_ || capturesBefore_ == captures; }
    /// GUI thread, after that.
    void leave() { busy_ = false; }

private:
    std::atomic<bool> busy_{false};
    std::atomic<unsigned> capturesBefore_{0};
};

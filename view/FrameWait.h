#pragma once

#include "FrameHandle.h"

#include <chrono>
#include <functional>

class ImageChannel;
class QWidget;

/// Waits on the GUI thread for the frame of a capture. A camera that answers at once costs nothing; one that
/// does not is waited for under a sign that says so, with windows that are painted, until Escape. Keys and
/// clicks of that time are dropped, so that no second command runs inside the first. GUI thread only.
class FrameWait
{
public:
    /// What the user has before him: the sign stands over it.
    using Front = std::function<QWidget&()>;

    explicit FrameWait(Front front) : front_(std::move(front)) {}

    /// As ImageChannel::take(); null as well when the user gave it up, and at once while another one waits.
    FrameHandle take(ImageChannel& channel, std::chrono::seconds timeout);
    bool isWaiting() const { return isWaiting_; }

private:
    struct Patience;

    Front front_;
    bool isWaiting_ = false;
};

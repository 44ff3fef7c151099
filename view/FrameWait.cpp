#include "FrameWait.h"

#include "ImageChannel.h"
#include "InputShield.h"
#include "WaitingSign.h"

#include <QCoreApplication>

#include <optional>

namespace {

// Longer than the next frame of a slow camera takes, shorter than a window seems dead.
constexpr std::chrono::milliseconds unnoticed(250);

} // namespace

/// While the user sees that the program waits.
struct FrameWait::Patience
{
    explicit Patience(QWidget& front) : sign(front) {}

    InputShield shield; // outlives the sign, whose end is painted behind it
    WaitingSign sign;
};

FrameHandle FrameWait::take(ImageChannel& channel, std::chrono::seconds timeout)
{
    if (isWaiting_)
        return {};
    isWaiting_ = true;
    const auto signIsDue = std::chrono::steady_clock::now() + unnoticed;
    std::optional<Patience> patience;
    FrameHandle frame = channel.take(timeout, [&] {
        if (std::chrono::steady_clock::now() < signIsDue)
            return true;
        if (!patience)
            patience.emplace(front_());
        QCoreApplication::processEvents();
        return !patience->shield.isEscapeSeen();
    });
    patience.reset(); // which lets events in once more
    isWaiting_ = false;
    return frame;
}

#include "FrameMailbox.h"

#include <utility>

bool FrameMailbox::put(const QImage& frame)
{
    QImage replaced = frame; // the old one goes after unlocking: its cleanup may take another lock
    const std::lock_guard<std::mutex> lock(mutex_);
    waiting_.swap(replaced);
    return !std::exchange(woken_, true);
}

QImage FrameMailbox::take()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    woken_ = false;
    return std::exchange(waiting_, QImage());
}

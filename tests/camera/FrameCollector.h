#pragma once

#include "Image.h"
#include "Pictures.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

/// Receives the frames of a stream and lets the test wait for what it expects.
class FrameCollector
{
public:
    /// Runs on the capture thread for each picture, before it is counted; may change the picture.
    std::function<void(mirvak::Image&)> onFrame;

    void take(mirvak::Image* image)
    {
        if (image && onFrame)
            onFrame(*image);
        const std::lock_guard lock(mutex_);
        if (image) {
            ++frames_;
            numbers_.push_back(pictures::numberOf(image->pixels));
            sizes_.push_back(image->pixels.size());
        } else {
            ++ends_;
        }
        changed_.notify_all();
    }

    /// False when the stream did not come that far within half a minute.
    bool waitForFrames(int count)
    {
        return wait([&] { return frames_ >= count; });
    }
    bool waitForEnd()
    {
        return wait([&] { return ends_ > 0; });
    }

    int frames() const { return locked(frames_); }
    int ends() const { return locked(ends_); }
    std::vector<int> numbers() const { return locked(numbers_); }
    std::vector<cv::Size> sizes() const { return locked(sizes_); }

private:
    template <class Condition> bool wait(Condition condition)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, std::chrono::seconds(30), condition);
    }
    template <class T> T locked(const T& value) const
    {
        const std::lock_guard lock(mutex_);
        return value;
    }

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    int frames_ = 0;
    int ends_ = 0;
    std::vector<int> numbers_;
    std::vector<cv::Size> sizes_;
};

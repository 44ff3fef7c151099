#pragma once

#include "Picture.h"
#include "mirvakcamera.h"

#include <condition_variable>
#include <mutex>

/// Receives a stream: keeps the first frames and notices its end. Outlives the stream. Thread-safe.
class FrameCollector
{
public:
    FrameCollector(MirvakCamera& camera, std::size_t keep) : camera_(camera), keep_(keep) {}

    /// To be given to StartPreview with the collector as context.
    static void onFrame(void* image, void* userData, int byteSize, int width, int height, void* context);

    bool waitForFrames(std::size_t count);
    bool waitForEnd();
    std::vector<Picture> frames() const;
    int ends() const;

private:
    void add(void* image, int byteSize, int width, int height);

    MirvakCamera& camera_;
    const std::size_t keep_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Picture> frames_;
    std::size_t count_ = 0;
    int ends_ = 0;
};

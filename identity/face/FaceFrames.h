#pragma once

#include "ImageChannel.h"

#include <QImage>

#include <chrono>
#include <functional>

enum class FaceRole { colour, infrared };

/// The frames of both face cameras: to the live picture, and through one channel to whoever wants to save
/// one. Each camera is served in its own role. Where the one that is wanted has been silent for three
/// seconds, because it is missing or was pulled out, the other's frames do. Thread-safe.
class FaceFrames
{
public:
    /// Receives frames as 24-bit RGB on a camera's thread; a copy of the picture keeps its pixels.
    using Show = std::function<void(const QImage&)>;

    FaceFrames(MirvakCamera& camera, Show show);

    /// The camera of this role begins to stream: it is not silent yet.
    void begin(FaceRole role);
    /// It streams no longer. With the last one, those who wait for a frame are sent away.
    void end(FaceRole role);
    void onFrame(FaceRole role, void* image);
    /// The next frame for this role is the next one that the channel gets.
    void want(FaceRole role);
    ImageChannel& channel() { return channel_; }

private:
    using Clock = std::chrono::steady_clock;
    bool serves(FaceRole role, FaceRole wanted);

    MirvakCamera& camera_;
    Show show_;
    ImageChannel channel_;
    std::mutex mutex_; ///< of what follows
    Clock::time_point last_[2];
    bool streams_[2] = {};
    FaceRole wanted_ = FaceRole::colour;
};

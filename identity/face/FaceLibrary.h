#pragma once

#include <mutex>

/// The face library's calls, one user at a time: it is started and ended as a whole. Thread-safe.
class FaceLibrary
{
public:
    /// One verification or liveness check, from the library's start to its end.
    class Run
    {
    public:
        /// Waits for whoever has the library, which is a part of a second.
        explicit Run(FaceLibrary& library);
        ~Run();
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;
        /// False: the library may not be used on this computer.
        bool isReady() const { return isReady_; }

    private:
        const std::lock_guard<std::mutex> lock_;
        bool isReady_ = false;
    };

    /// A look at a live frame (RGB, rows without padding). Leaves the library started, for the next look.
    /// @return whether a face was found; its place in pixels is in `left` and so on
    struct Place
    {
        bool isFound = false;
        float left = 0, top = 0, width = 0, height = 0;
    };
    Place look(const unsigned char* rgb, int width, int height);
    /// Ends what look() has started.
    void rest();

private:
    void end();

    std::mutex mutex_; ///< of the library and of what follows
    bool isStarted_ = false;
    bool isUseless_ = false; ///< it did not start: the looks say so once
};

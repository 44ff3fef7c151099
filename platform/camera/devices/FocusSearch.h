#pragma once

#include "CameraBackend.h"
#include "Image.h"

#include <map>
#include <mutex>
#include <vector>

namespace mirvak {

/// Focuses on a place of the picture: tries positions of the lens out, evenly spread first, then closer and
/// closer around the best, and leaves the lens where that place is sharpest. It has no thread: each frame
/// takes it a little further. Thread-safe.
class FocusSearch
{
public:
    /// `device` is borrowed.
    explicit FocusSearch(CameraDevice& device) : device_(device) {}

    /// The place as shares of the picture's width and height. Results as MirvakDevice_FocusAt.
    MirvakResult begin(double x, double y);
    /// Gives up; the lens stays where it is.
    void cancel();
    /// Gives up; the lens goes back to where it was.
    void abandon();
    /// Capture thread: the newest frame.
    void look(const Image& image);
    /// As MirvakDevice_GetFocusState.
    MirvakResult state() const;

private:
    struct Before
    {
        bool isAutomatic;
        int focus;
    };

    MirvakResult restartAutomatic();
    MirvakResult planFirst(const MirvakControlInfo& focus);
    void advance();
    bool planCloser();
    void move();
    void finish(MirvakResult result);
    void goBack();

    CameraDevice& device_;
    mutable std::mutex mutex_; // guards what follows
    double x_ = 0, y_ = 0;
    MirvakResult state_ = MIRVAK_OK; // BUSY while it runs
    Before before_{};
    MirvakControlInfo range_{};
    std::vector<int> toTry_;                        // next one last
    std::map<int, double> sharpness_;               // by position
    int spacing_ = 0;                               // between the positions that were tried
    int framesSeen_ = 0;                            // since the lens was moved
    std::chrono::steady_clock::time_point movedAt_; // of the first of them
};

} // namespace mirvak

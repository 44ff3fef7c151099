#pragma once

#include "mirvakcamera.h"
#include "waitFor.h"

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include <condition_variable>
#include <mutex>
#include <vector>

/// Receives a stream: keeps the first frames (RGB) and notices its end. Outlives the stream. Thread-safe.
class FrameCollector
{
public:
    FrameCollector(MirvakCamera& camera, int keep) : camera_(camera), keep_(keep) {}

    /// To be given to StartPreview with the collector as context.
    static void onFrame(void* image, void*, int byteSize, int width, int height, void* context)
    {
        static_cast<FrameCollector*>(context)->add(image, byteSize, {width, height});
    }
    bool waitForFrames(int count)
    {
        return wait([&] { return count_ >= count; });
    }
    bool waitForEnd()
    {
        return wait([&] { return ends_ > 0; });
    }
    std::vector<cv::Mat> frames() const
    {
        const std::lock_guard lock(mutex_);
        return frames_;
    }
    int ends() const
    {
        const std::lock_guard lock(mutex_);
        return ends_;
    }

private:
    template <class Condition> bool wait(Condition condition)
    {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, patience, condition);
    }
    void add(void* image, int byteSize, cv::Size size)
    {
        EXPECT_EQ(byteSize, size.area() * 3);
        cv::Mat picture(size, CV_8UC3);
        if (image) {
            EXPECT_EQ(camera_.MirvakImage_GetImageRGBData(image, picture.data), MIRVAK_OK);
        }
        const std::lock_guard lock(mutex_);
        ++(image ? count_ : ends_);
        if (image && count_ <= keep_)
            frames_.push_back(picture);
        changed_.notify_all();
    }

    MirvakCamera& camera_;
    const int keep_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<cv::Mat> frames_;
    int count_ = 0, ends_ = 0;
};

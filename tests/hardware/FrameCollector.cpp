#include "FrameCollector.h"

#include "waitFor.h"

#include <gtest/gtest.h>

void FrameCollector::onFrame(void* image, void*, int byteSize, int width, int height, void* context)
{
    static_cast<FrameCollector*>(context)->add(image, byteSize, width, height);
}

void FrameCollector::add(void* image, int byteSize, int width, int height)
{
    Picture picture;
    if (image) {
        EXPECT_EQ(byteSize, width * height * 3);
        picture = {width, height, std::vector<unsigned char>(std::size_t(byteSize))};
        EXPECT_EQ(camera_.MirvakImage_GetImageRGBData(image, picture.rgb.data()), MIRVAK_OK);
    }
    const std::lock_guard lock(mutex_);
    if (!image)
        ++ends_;
    else if (++count_ <= keep_)
        frames_.push_back(std::move(picture));
    changed_.notify_all();
}

bool FrameCollector::waitForFrames(std::size_t count)
{
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [&] { return count_ >= count; });
}

bool FrameCollector::waitForEnd()
{
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, patience, [&] { return ends_ > 0; });
}

std::vector<Picture> FrameCollector::frames() const
{
    const std::lock_guard lock(mutex_);
    return frames_;
}

int FrameCollector::ends() const
{
    const std::lock_guard lock(mutex_);
    return ends_;
}

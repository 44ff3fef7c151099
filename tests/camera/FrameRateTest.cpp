// The rate that a driver is asked for, with a driver that lives in this file.
#include "V4l2Modes.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

struct Driver
{
    static constexpr int fd = 1 << 20; // no descriptor of this process

    std::vector<v4l2_fract> intervals;
    v4l2_frmivaltypes kind = V4L2_FRMIVAL_TYPE_DISCRETE;
    v4l2_fract chosen{1, 1};

    int call(unsigned long request, void* argument)
    {
        if (request == VIDIOC_ENUM_FRAMEINTERVALS) {
            auto& entry = *static_cast<v4l2_frmivalenum*>(argument);
            if (entry.index >= intervals.size())
                return -1;
            entry.type = kind;
            if (kind == V4L2_FRMIVAL_TYPE_DISCRETE)
                entry.discrete = intervals[entry.index];
            else
                entry.stepwise = {intervals.front(), intervals.back(), {1, 1000}};
            return 0;
        }
        auto& capture = static_cast<v4l2_streamparm*>(argument)->parm.capture;
        if (request == VIDIOC_G_PARM) {
            capture.capability = V4L2_CAP_TIMEPERFRAME;
            capture.timeperframe = chosen;
        } else if (request == VIDIOC_S_PARM) {
            chosen = capture.timeperframe;
        }
        return 0;
    }
} driver;

std::pair<unsigned, unsigned> rateOf(std::vector<v4l2_fract> intervals, v4l2_frmivaltypes kind)
{
    driver = {std::move(intervals), kind, {1, 1}};
    mirvak::chooseHighestRate(Driver::fd, {mirvak::PixelFormat::Mjpeg, 640, 480});
    return {driver.chosen.denominator, driver.chosen.numerator};
}

} // namespace

// Takes the place of the C library's in this program.
extern "C" int ioctl(int fd, unsigned long request, ...) noexcept
{
    va_list rest;
    va_start(rest, request);
    void* const argument = va_arg(rest, void*);
    va_end(rest);
    return fd == Driver::fd ? driver.call(request, argument) : int(syscall(SYS_ioctl, fd, request, argument));
}

TEST(FrameRate, TheHighestOneIsAskedForWhateverTheOrder)
{
    using Rate = std::pair<unsigned, unsigned>;
    EXPECT_EQ(rateOf({{1, 15}, {1001, 30000}, {1, 25}, {1, 5}}, V4L2_FRMIVAL_TYPE_DISCRETE),
              Rate(30000, 1001));
    EXPECT_EQ(rateOf({{1, 60}, {1, 5}}, V4L2_FRMIVAL_TYPE_STEPWISE), Rate(60, 1));
    EXPECT_EQ(rateOf({}, V4L2_FRMIVAL_TYPE_DISCRETE), Rate(1, 1))
        << "a driver without a choice keeps its own";
}

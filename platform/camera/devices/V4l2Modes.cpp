#include "V4l2Modes.h"

#include "V4l2Ioctl.h"

#include <linux/videodev2.h>

#include <algorithm>
#include <array>
#include <utility>

namespace mirvak {
namespace {

constexpr std::array<std::pair<uint32_t, PixelFormat>, 8> formats = {{
    {V4L2_PIX_FMT_MJPEG, PixelFormat::Mjpeg},
    {V4L2_PIX_FMT_YUYV, PixelFormat::Yuyv},
    {V4L2_PIX_FMT_NV12, PixelFormat::Nv12},
    {V4L2_PIX_FMT_YUV420, PixelFormat::Yu12},
    {V4L2_PIX_FMT_RGB24, PixelFormat::Rgb24},
    {V4L2_PIX_FMT_BGR24, PixelFormat::Bgr24},
    {V4L2_PIX_FMT_GREY, PixelFormat::Grey},
    {V4L2_PIX_FMT_Y16, PixelFormat::Y16},
}};

constexpr std::array<std::pair<int, int>, 14> usualSizes = {{{640, 480},
                                                             {800, 600},
                                                             {1024, 768},
                                                             {1280, 720},
                                                             {1280, 960},
                                                             {1600, 1200},
                                                             {1920, 1080},
                                                             {2048, 1536},
                                                             {2592, 1944},
                                                             {3264, 2448},
                                                             {3840, 2160},
                                                             {4160, 3120},
                                                             {4608, 3456},
                                                             {5120, 3840}}};

std::optional<PixelFormat> formatOf(uint32_t fourcc)
{
    const auto found = std::find_if(
        formats.begin(), formats.end(), [&](const auto& format) { return format.first == fourcc; });
    return found != formats.end() ? std::optional(found->second) : std::nullopt;
}

/// Chroma is shared by two pixels in a row, in 4:2:0 by two rows too.
bool canDecode(PixelFormat format, int width, int height)
{
    const bool planar = format == PixelFormat::Nv12 || format == PixelFormat::Yu12;
    const bool pairs = planar || format == PixelFormat::Yuyv;
    return width > 0 && height > 0 && !(pairs && width % 2) && !(planar && height % 2);
}

void add(std::vector<CameraMode>& modes, PixelFormat format, uint32_t width, uint32_t height)
{
    const CameraMode mode{format, static_cast<int>(width), static_cast<int>(height)};
    if (canDecode(format, mode.width, mode.height))
        modes.push_back(mode);
}

bool isOnGrid(uint32_t value, uint32_t least, uint32_t most, uint32_t step)
{
    return value >= least && value <= most && (value - least) % std::max(step, 1U) == 0;
}

void addRange(std::vector<CameraMode>& modes, PixelFormat format, const v4l2_frmsize_stepwise& range)
{
    for (const auto& [width, height] : usualSizes) {
        const auto w = static_cast<uint32_t>(width);
        const auto h = static_cast<uint32_t>(height);
        const bool isLargest = w == range.max_width && h == range.max_height;
        if (!isLargest && isOnGrid(w, range.min_width, range.max_width, range.step_width) &&
            isOnGrid(h, range.min_height, range.max_height, range.step_height))
            add(modes, format, w, h);
    }
    constexpr uint32_t sideAtMost = 16384; // a driver's "no limit" is no size
    if (range.max_width <= sideAtMost && range.max_height <= sideAtMost)
        add(modes, format, range.max_width, range.max_height);
}

void addSizes(std::vector<CameraMode>& modes, int fd, uint32_t fourcc, PixelFormat format)
{
    v4l2_frmsizeenum size{};
    size.pixel_format = fourcc;
    for (; videoIoctl(fd, VIDIOC_ENUM_FRAMESIZES, &size) == 0; ++size.index) {
        if (size.type != V4L2_FRMSIZE_TYPE_DISCRETE) {
            addRange(modes, format, size.stepwise);
            return; // a range has one entry only
        }
        add(modes, format, size.discrete.width, size.discrete.height);
    }
    if (size.index > 0)
        return;
    v4l2_format current{}; // an old driver that cannot list its sizes streams at least the present one
    current.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    if (videoIoctl(fd, VIDIOC_G_FMT, &current) == 0)
        add(modes, format, current.fmt.pix.width, current.fmt.pix.height);
}

bool isShorter(const v4l2_fract& a, const v4l2_fract& b)
{
    return uint64_t(a.numerator) * b.denominator < uint64_t(b.numerator) * a.denominator;
}

std::optional<v4l2_fract> shortestInterval(int fd, const CameraMode& mode)
{
    std::optional<v4l2_fract> shortest;
    v4l2_frmivalenum interval{};
    interval.pixel_format = fourccOf(mode.format);
    interval.width = static_cast<uint32_t>(mode.width);
    interval.height = static_cast<uint32_t>(mode.height);
    for (; videoIoctl(fd, VIDIOC_ENUM_FRAMEINTERVALS, &interval) == 0; ++interval.index) {
        if (interval.type != V4L2_FRMIVAL_TYPE_DISCRETE)
            return interval.stepwise.min;
        if (!shortest || isShorter(interval.discrete, *shortest))
            shortest = interval.discrete;
    }
    return shortest;
}

} // namespace

std::vector<CameraMode> listVideoModes(int fd)
{
    std::vector<CameraMode> modes;
    v4l2_fmtdesc entry{};
    entry.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    for (; videoIoctl(fd, VIDIOC_ENUM_FMT, &entry) == 0; ++entry.index) {
        const auto format = formatOf(entry.pixelformat);
        const bool emulated = entry.flags & V4L2_FMT_FLAG_EMULATED; // converted in software: slower than here
        if (format && !emulated)
            addSizes(modes, fd, entry.pixelformat, *format);
    }
    return modes;
}

uint32_t fourccOf(PixelFormat format)
{
    const auto found = std::find_if(
        formats.begin(), formats.end(), [&](const auto& entry) { return entry.second == format; });
    return found->first;
}

void chooseHighestRate(int fd, const CameraMode& mode)
{
    const auto interval = shortestInterval(fd, mode);
    v4l2_streamparm parameters{};
    parameters.type = V4L2_BUF_TYPE_VIDEO_CAPTURE;
    if (!interval || videoIoctl(fd, VIDIOC_G_PARM, &parameters) != 0 ||
        !(parameters.parm.capture.capability & V4L2_CAP_TIMEPERFRAME))
        return;
    parameters.parm.capture.timeperframe = *interval;
    videoIoctl(fd, VIDIOC_S_PARM, &parameters); // refused: the camera keeps the rate that it had
}

} // namespace mirvak

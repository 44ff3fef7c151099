// What the library needs of a kind of camera. V4l2Backend talks to the kernel's video devices, DeskBackend
// plays pictures; everything above (pump, decoder, facade) knows only these interfaces.
#pragma once

#include "mirvakcamera.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace mirvak {

class WakeEvent;

/// Layouts of the bytes that cameras deliver. YUV formats are BT.601, video range, 4:2:2 or 4:2:0.
enum class PixelFormat {
    Mjpeg,
    Yuyv,  ///< packed, two bytes a pixel
    Nv12,  ///< luma plane, then one plane of U and V alternating
    Yu12,  ///< luma plane, U plane, V plane
    Rgb24, ///< red, green, blue
    Bgr24,
    Grey, ///< 8 bits
    Y16,  ///< 16 bits, little endian
};

constexpr bool isGrey(PixelFormat format)
{
    return format == PixelFormat::Grey || format == PixelFormat::Y16;
}

/// One way in which a camera can stream; sizes in pixels.
struct CameraMode
{
    PixelFormat format;
    int width, height;
};

constexpr bool operator==(const CameraMode& a, const CameraMode& b)
{
    return a.format == b.format && a.width == b.width && a.height == b.height;
}

struct CameraInfo
{
    std::string name;
    std::string usbId;           ///< vendor and product, 8 lowercase hexadecimal digits; empty off the USB
    std::string identity;        ///< the same while it is there and when it comes back; one of its kind
    int type = 0;                ///< 1 main, 2 other colour, 3 infrared; 0 not decided yet
    bool greyOnly = false;       ///< offers no colour
    bool refused = false;        ///< may not be opened, so that nothing more is known of it
    long long largestPixels = 0; ///< pixels of the largest picture
    std::string address;         ///< how its own back end finds it again
};

inline bool operator==(const CameraInfo& a, const CameraInfo& b)
{
    return a.identity == b.identity && a.name == b.name && a.type == b.type && a.refused == b.refused &&
           a.address == b.address;
}

/// The bytes of one frame, owned by the device, valid until its next read(), giveBack() or stop().
struct RawFrame
{
    PixelFormat format = PixelFormat::Mjpeg;
    int width = 0, height = 0; ///< pixels that the frame must have
    size_t stride = 0;         ///< bytes from row to row of the first plane; not used for MJPEG
    const uint8_t* data = nullptr;
    size_t size = 0; ///< bytes
};

enum class ReadStatus {
    Frame,
    Damaged, ///< the transport says that the frame is broken
    TimedOut,
    Stopped, ///< the stop event is signalled
    Gone,    ///< the device is unplugged or has failed; nothing more will come
};

/// An open camera. start() and stop() come from one thread; between them read() and giveBack() come from one
/// other thread.
class CameraDevice
{
public:
    virtual ~CameraDevice() = default;

    /// In the device's own order; never empty.
    virtual const std::vector<CameraMode>& modes() const = 0;
    /// @param waiting number of frames that may wait for read(); older ones are dropped
    virtual MirvakResult start(const CameraMode& mode, int waiting) = 0;
    virtual void stop() = 0;
    /// Waits for the next frame, at most `timeout`, or until `stop` is signalled.
    virtual ReadStatus read(RawFrame& frame, std::chrono::milliseconds timeout, const WakeEvent& stop) = 0;
    /// The bytes of the last frame are no longer needed.
    virtual void giveBack() {}
    /// Sets the lens or sensor zoom, 1.0 being the widest view. False when the camera cannot.
    /// Any thread.
    virtual bool setZoom(double /*factor*/) { return false; }

    /// What the camera offers, rising. Any thread, as with the two below.
    virtual std::vector<MirvakControl> controls() { return {}; }
    /// MIRVAK_BAD_ARGUMENT for what is not offered, MIRVAK_NO_DEVICE, MIRVAK_IO_ERROR.
    virtual MirvakResult readControl(MirvakControl /*control*/, MirvakControlInfo& /*info*/)
    {
        return MIRVAK_BAD_ARGUMENT;
    }
    /// `value` is brought into the range and to a step. Also MIRVAK_BUSY for what an automatic holds.
    virtual MirvakResult setControl(MirvakControl /*control*/, int /*value*/) { return MIRVAK_BAD_ARGUMENT; }
};

/// enumerate() is called by one thread at a time; open() may come from another one meanwhile.
class CameraBackend
{
public:
    virtual ~CameraBackend() = default;

    /// Looks for cameras anew. A camera that is known already is not touched, so that this costs next to
    /// nothing and leaves its stream alone. A camera that cannot be asked is left out.
    virtual std::vector<CameraInfo> enumerate() = 0;
    /// Null, the reason in `why`, and a line on standard error, when the camera cannot be opened:
    /// MIRVAK_NO_ACCESS, MIRVAK_BUSY or MIRVAK_NO_DEVICE.
    virtual std::unique_ptr<CameraDevice> open(const CameraInfo& camera, MirvakResult& why) = 0;
};

} // namespace mirvak

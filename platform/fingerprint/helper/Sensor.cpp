#include "Sensor.h"

#include "FingerPixels.h"

#include <glib-unix.h>

#include <cstdio>
#include <sys/socket.h>

namespace mirvak::helper {

namespace {

/// Frees an error at the end of the scope, and says it.
struct Trouble
{
    GError* error = nullptr;

    Trouble() = default;
    ~Trouble() { g_clear_error(&error); }
    Trouble(const Trouble&) = delete;
    Trouble& operator=(const Trouble&) = delete;

    void say(const char* doing) const
    {
        if (error && !g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
            std::fprintf(stderr, "fingerprint: %s: %s\n", doing, error->message);
    }
};

void tell(Message message, const FingerPixels& pixels = {})
{
    iovec parts[] = {{&message, sizeof message}, {const_cast<std::uint8_t*>(pixels.data()), pixels.size()}};
    msghdr packet = {};
    packet.msg_iov = parts;
    packet.msg_iovlen = 2;
    sendmsg(socketFd, &packet, MSG_NOSIGNAL);
}

/// The sensor of that number which can deliver pictures; the first where there are fewer.
FpDevice* choose(GPtrArray& devices, int number)
{
    FpDevice* first = nullptr;
    for (guint i = 0; i < devices.len; ++i) {
        auto* device = FP_DEVICE(g_ptr_array_index(&devices, i));
        if (!fp_device_has_feature(device, FP_DEVICE_FEATURE_CAPTURE))
            continue;
        if (!first)
            first = device;
        if (--number == 0)
            return device;
    }
    return first;
}

FingerPixels pixelsOf(FpImage& image)
{
    gsize length = 0;
    const guchar* data = fp_image_get_data(&image, &length);
    const cv::Size size(static_cast<int>(fp_image_get_width(&image)),
                        static_cast<int>(fp_image_get_height(&image)));
    if (!data || size.empty() || length < static_cast<gsize>(size.area()))
        return {};
    return fitFinger(cv::Mat(size, CV_8UC1, const_cast<guchar*>(data)));
}

} // namespace

void Sensor::Call::done(GObject*, GAsyncResult* result, void* call)
{
    static_cast<Call*>(call)->result.reset(G_ASYNC_RESULT(g_object_ref(result)));
}

void Sensor::Call::wait()
{
    while (!result)
        g_main_context_iteration(nullptr, TRUE);
}

gboolean Sensor::onHangUp(int, GIOCondition, void* self)
{
    g_cancellable_cancel(static_cast<Sensor*>(self)->wanted_.get());
    return G_SOURCE_REMOVE;
}

Sensor::Sensor(int number) : wanted_(g_cancellable_new()), drivers_(fp_context_new()), number_(number)
{
    g_unix_fd_add(socketFd, static_cast<GIOCondition>(G_IO_HUP | G_IO_ERR | G_IO_IN), onHangUp, this);
}

int Sensor::run()
{
    if (!open()) {
        tell(Message::none);
        return 1;
    }
    tell(Message::ready);
    const Ref<FpImage> image = capture();
    const FingerPixels pixels = image ? pixelsOf(*image) : FingerPixels();
    if (isWanted())
        tell(pixels.empty() ? Message::lost : Message::picture, pixels);
    close();
    return 0;
}

bool Sensor::open()
{
    FpDevice* found = choose(*fp_context_get_devices(drivers_.get()), number_);
    if (!found)
        return false;
    device_.reset(FP_DEVICE(g_object_ref(found)));
    Call call;
    fp_device_open(device_.get(), wanted_.get(), Call::done, &call);
    call.wait();
    Trouble trouble;
    const bool isOpen = fp_device_open_finish(device_.get(), call.result.get(), &trouble.error);
    trouble.say("the sensor cannot be opened");
    return isOpen;
}

/// A finger that lay badly is asked for again.
Ref<FpImage> Sensor::capture()
{
    while (isWanted()) {
        Call call;
        fp_device_capture(device_.get(), TRUE, wanted_.get(), Call::done, &call);
        call.wait();
        Trouble trouble;
        Ref<FpImage> image(fp_device_capture_finish(device_.get(), call.result.get(), &trouble.error));
        if (image || !trouble.error || trouble.error->domain != FP_DEVICE_RETRY) {
            trouble.say("the sensor failed");
            return image;
        }
    }
    return nullptr;
}

void Sensor::close()
{
    Call call;
    fp_device_close(device_.get(), nullptr, Call::done, &call);
    call.wait();
    fp_device_close_finish(device_.get(), call.result.get(), nullptr);
}

} // namespace mirvak::helper

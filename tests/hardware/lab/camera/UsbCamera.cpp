#include "UsbCamera.h"

#include <cerrno>
#include <cstdio>

namespace lab {

namespace {

// Standard requests and descriptor types of the Universal Serial Bus Specification 2.0, chapter 9.
constexpr int getStatus = 0, clearFeature = 1, getDescriptor = 6, getConfiguration = 8, getInterface = 10;
constexpr int deviceType = 1, configurationType = 2, stringType = 3;
constexpr int streamingEndpoint = 1, streamingInterface = 1;
constexpr int toEndpoint = 2;

} // namespace

UsbCamera::UsbCamera(const CameraModel& model, const Pictures& pictures, int portNumber)
    : model_(model), descriptors_(model_), negotiation_(model_), port_(portNumber),
      streamer_(model_, pictures, port_)
{
}

void UsbCamera::run()
{
    while (const std::optional<Urb> urb = port_.next())
        handle(*urb);
}

void UsbCamera::handle(const Urb& urb)
{
    if (urb.isUnlink) {
        const bool wasPending =
            streamer_.transfers().remove(urb.unlinkSequence) || buttonTransfers_.remove(urb.unlinkSequence);
        port_.finish(urb, wasPending ? -ECONNRESET : 0);
    } else if (urb.endpoint == 0) {
        control(urb);
    } else {
        (urb.endpoint == streamingEndpoint ? streamer_.transfers() : buttonTransfers_).put(urb);
    }
}

void UsbCamera::control(const Urb& urb)
{
    Answer bytes = answer(urb);
    if (!bytes) {
        port_.finish(urb, -EPIPE);
    } else if (urb.toHost) {
        port_.send(urb, bytes->data(), std::min<std::size_t>(bytes->size(), urb.length));
    } else {
        port_.finish(urb, 0, urb.length);
    }
}

Answer UsbCamera::answer(const Urb& urb)
{
    const Setup& setup = urb.setup;
    if (setup.isStandard())
        return standardRequest(setup);
    if (!setup.isClass())
        return std::nullopt;
    return setup.interface() == streamingInterface ? streamRequest(setup, urb.data)
                                                   : controls_.request(setup, urb.data);
}

Answer UsbCamera::standardRequest(const Setup& setup)
{
    switch (setup.request) {
    case getDescriptor:
        return descriptor(setup);
    case getConfiguration:
        return Bytes{1};
    case getInterface:
        return Bytes{0};
    case getStatus:
        return Bytes{0, 0};
    case clearFeature:
        if ((setup.type & 0x1f) == toEndpoint)
            streamer_.restart();
        [[fallthrough]];
    default:
        return Bytes();
    }
}

Answer UsbCamera::descriptor(const Setup& setup) const
{
    switch (setup.value >> 8) {
    case deviceType:
        return descriptors_.device();
    case configurationType:
        return descriptors_.configuration();
    case stringType:
        return descriptors_.string(setup.value & 0xff);
    default:
        return std::nullopt;
    }
}

Answer UsbCamera::streamRequest(const Setup& setup, const Bytes& data)
{
    const Answer result = negotiation_.request(setup, data);
    if (Negotiation::isCommit(setup)) {
        const StreamChoice choice = negotiation_.choice();
        const FrameSize size = model_.sizes[choice.frameIndex];
        std::printf("stream %s %d %d %u\n",
                    choice.format == 1 ? "MJPG" : "YUYV",
                    size.width,
                    size.height,
                    choice.interval);
        streamer_.start(choice);
    }
    return result;
}

bool UsbCamera::pressButton()
{
    constexpr std::uint8_t streamStatus = 2, buttonEvent = 0;
    for (const std::uint8_t pressed : {1, 0}) {
        const Bytes status{streamStatus, streamingInterface, buttonEvent, pressed};
        const bool heard = buttonTransfers_.serve(0, std::chrono::seconds(5), [&](const Urb& urb) {
            port_.send(urb, status.data(), status.size());
        });
        if (!heard)
            return false;
    }
    return true;
}

} // namespace lab

#pragma once

#include "Controls.h"
#include "Descriptors.h"
#include "Streamer.h"

namespace lab {

/// A USB document camera in software: to the host it is a device on a real bus, driven by the stock drivers.
/// Each stream that the host decides on is told on standard output as "stream FORMAT WIDTH HEIGHT INTERVAL".
class UsbCamera
{
public:
    /// Plugs the camera in. Throws std::system_error when the port cannot be had.
    UsbCamera(const CameraModel& model, const Pictures& pictures, int portNumber);

    /// Serves the host until it lets the device go.
    void run();
    /// Presses and releases the snapshot button; any thread. False when the host does not listen.
    bool pressButton();

private:
    void handle(const Urb& urb);
    void control(const Urb& urb);
    Answer answer(const Urb& urb);
    Answer standardRequest(const Setup& setup);
    Answer descriptor(const Setup& setup) const;
    Answer streamRequest(const Setup& setup, const Bytes& data);

    CameraModel model_;
    Descriptors descriptors_;
    Controls controls_;
    Negotiation negotiation_;
    VhciPort port_;
    TransferQueue buttonTransfers_;
    Streamer streamer_;
};

} // namespace lab

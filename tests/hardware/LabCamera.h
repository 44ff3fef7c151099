#pragma once

#include "Lines.h"

#include <vector>

#include <sys/types.h>

/// What a camera of the lab is made of. Serial numbers follow from the port, so two may share a name.
struct LabCameraModel
{
    std::string usbId; ///< 8 hexadecimal digits
    std::string name;
    int port;                       ///< of the emulated USB controller, 0 to 7
    std::vector<std::string> sizes; ///< "640x480", both as MJPEG and as YUYV
};

/// A USB camera in software that hangs on the real driver. Throws std::runtime_error when it does not appear.
class LabCamera
{
public:
    /// Plugs it in and waits until the system has named its devices.
    explicit LabCamera(LabCameraModel model);
    ~LabCamera();
    LabCamera(const LabCamera&) = delete;
    LabCamera& operator=(const LabCamera&) = delete;

    /// Pulls the cable and waits until the system has noticed.
    void unplug();
    /// Presses and releases the snapshot button.
    void pressButton();
    /// Waits until the camera has told a line with this beginning ("stream MJPG 640 480", "control 1 11");
    /// earlier lines count once. Returns the line, empty when it never came.
    std::string waitForReport(const std::string& beginning);

private:
    bool isThere() const;

    LabCameraModel model_;
    pid_t process_ = -1;
    int socket_ = -1; ///< the other end is its standard input and output
    Lines reports_;
};

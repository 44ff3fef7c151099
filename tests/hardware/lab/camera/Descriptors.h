#pragma once

#include "CameraModel.h"
#include "Setup.h"

namespace lab {

/// The descriptors of a USB Video Class 1.0 camera: a control interface with a camera terminal (unit 1), a
/// processing unit (2) and a snapshot button on interrupt endpoint 2, and a streaming interface with MJPEG
/// (format 1) and YUYV (format 2) on bulk endpoint 1.
/// Tables: USB Device Class Definition for Video Devices 1.0, chapter 3.
class Descriptors
{
public:
    explicit Descriptors(const CameraModel& model) : model_(model) {}

    Bytes device() const;
    Bytes configuration() const;
    Bytes string(int index) const; ///< 0 languages, 1 maker, 2 name, 3 serial number

private:
    Bytes videoControl() const;
    Bytes videoStreaming() const;
    Bytes frames(int subtype) const;

    const CameraModel& model_;
};

} // namespace lab

#pragma once

#include "NZEnumerator.h"

#include <string>

/// Lists the device files of printers.
class NZUsbIOEnumerator_linux : public NZEnumerator
{
public:
    explicit NZUsbIOEnumerator_linux(std::string directory = "/dev/usb") : directory_(std::move(directory)) {}

    int Enumerate(char* buf, std::size_t size, std::size_t* total) override;

private:
    std::string directory_;
};

#pragma once

#include "NZUsbIO_linux.h"

class Job;

/// A printer's device file. A job that is stopped ends its waits for the printer early.
class PrinterStream : public NZUsbIO_linux
{
public:
    using NZUsbIO_linux::NZUsbIO_linux;

    /// Null: waits last as long as they may. The job is borrowed.
    void watch(const Job* job) { job_ = job; }

    int BaseWrite(const std::uint8_t* buf, std::size_t len, std::size_t timeoutMs) override;

private:
    const Job* job_ = nullptr;
};

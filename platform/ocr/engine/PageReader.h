#pragma once

#include "Models.h"
#include "Reading.h"

#include <string>

namespace mirvak {

/// Reads the picture of a page: finds out how it lies and in which language it is written, then reads block
/// after block. A page that lies on its side or head is turned. One thread at a time.
class PageReader
{
public:
    /// `stopped` ends a reading early; borrowed.
    PageReader(Models& models, const std::atomic<bool>& stopped) : models_(models), stopped_(stopped) {}

    Reading read(const std::string& picturePath, ReadPage& page);

private:
    Models& models_;
    const std::atomic<bool>& stopped_;
};

} // namespace mirvak

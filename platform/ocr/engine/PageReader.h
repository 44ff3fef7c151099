#pragma once

#include "Models.h"
#include "Reading.h"
#include "Watch.h"

#include <string>

namespace mirvak {

/// Reads the picture of a page: finds out how it lies and in which language it is written, then reads block
/// after block. A page that lies on its side or head is turned. One thread at a time.
class PageReader
{
public:
    /// Both are borrowed.
    PageReader(Models& models, Watch& watch) : models_(models), watch_(watch) {}

    Reading read(const std::string& picturePath, ReadPage& page);

private:
    Models& models_;
    Watch& watch_;
};

} // namespace mirvak

#pragma once

#include "Models.h"

#include <string>

namespace mirvak {

enum class Reading {
    ok,
    noPicture, ///< the file is missing or no picture
    noModel,   ///< no model could be loaded
    noText,    ///< nothing in the picture can be read
    late,      ///< no part was read in time, or the reading was stopped
};

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

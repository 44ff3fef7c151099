#pragma once

#include "Codec.h"

#include <sys/stat.h>

#include <string>

namespace mirvak {

/// Tells one state of a file from every other.
struct FileState
{
    dev_t device = 0;
    ino_t node = 0;
    off_t size = 0; ///< bytes
    timespec changed{};
};
bool operator==(const FileState& a, const FileState& b);
inline bool operator!=(const FileState& a, const FileState& b)
{
    return !(a == b);
}

/// A file that has been read in one go, with the state it was in.
struct PictureFile
{
    Bytes bytes;
    FileState state;

    /// `path` in UTF-8; regular files only. Throws std::runtime_error with path and reason.
    static PictureFile read(const std::string& path);
};

} // namespace mirvak

#pragma once

#include <cstddef>

/// Looks into directories.
class NZDirectoryList_linux
{
public:
    /// Puts the path of everything in `dir` that is no directory itself into `buf`, each with its terminating
    /// zero, in the directory's order, until one does not fit into `size` bytes. Paths are cut to 299 bytes.
    /// @param prefixes what a name may begin with, ended by a null; null for every name
    /// @param total unless null, gets the sum of the paths' lengths, each with two bytes more
    /// @return the number of paths; 0 for a directory that is not there
    static int
    ListFiles(const char* dir, const char* const* prefixes, char* buf, std::size_t size, std::size_t* total);
};

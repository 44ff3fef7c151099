#pragma once

#include <atomic>
#include <string>

namespace mirvak {

/// What other threads see of copies, and say to them.
struct CopyWatch
{
    std::atomic<bool> cancelled{false};
    std::atomic<int> percent{0}; ///< of the one that runs
};

/// Rewrites a recording's file, which is in fragments, as a plain MP4 file with its index at the begin:
/// beside it, synced, then put in its place. The packets stay as they are. Whatever goes wrong, the file in
/// fragments stays and nothing else is left behind: a disk without room for both, cancelled by another
/// thread. `film` is that file, opened: it alone is replaced, never one that has taken its name since. Prints
/// one line on standard error when it fails.
/// @return whether the file is a plain one now
bool makePlain(const std::string& path, int film, CopyWatch& watch);

} // namespace mirvak

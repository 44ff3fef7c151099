#pragma once

#include <atomic>
#include <string>

namespace mirvak {

/// Rewrites a recording's file, which is in fragments, as a plain MP4 file with its index at the begin:
/// beside it, synced, then renamed over it. The packets stay as they are. Whatever goes wrong, the file in
/// fragments stays and nothing else is left behind: a disk without room for both, a file that was moved,
/// replaced or deleted meanwhile, `cancelled` set by another thread. Prints one line on standard error when
/// it fails.
/// @return whether the file is a plain one now
bool makePlain(const std::string& path, const std::atomic<bool>& cancelled);

} // namespace mirvak

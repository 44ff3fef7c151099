#pragma once

#include <string>

namespace mirvak {

/// Removes from `folder` (UTF-8), not from those below it, the temporary files that no living process writes
/// any more: the writer holds a lock on its file as long as it lives. On a file system without locks nothing
/// is removed. Thread-safe, and against writers in other processes too.
void removeLeftOvers(const std::string& folder);

} // namespace mirvak

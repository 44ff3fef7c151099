#pragma once

#include <string>

namespace mirvak {

/// Renames a file to a name of the same folder that nothing has yet; what has it is never replaced, not even
/// when it appears at the last moment. @return 0, EEXIST when the name is taken, or another errno; the file
/// has kept its old name then.
int moveToNewName(const std::string& from, const std::string& to);

} // namespace mirvak

#pragma once

#include <string_view>

namespace mirvak {

/// What the names of temporary files begin and end with; between them stand a process and a number.
constexpr std::string_view temporaryBegin = ".lumro-";
constexpr std::string_view temporaryEnd = ".tmp";

enum class Lock { held, heldByAnother, unknown /**< the file system has no locks */ };

/// Marks a temporary file as being written, until `file` is closed or its process ends, however it ends.
/// `file` is open for writing. Other handles of the file, in this process too, get heldByAnother.
Lock lockTemporary(int file);

} // namespace mirvak

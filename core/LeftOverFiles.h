#pragma once

#include <QString>

/// What programs that were killed while they wrote have left beside the user's files.
namespace leftOverFiles {

/// Removes it from `folder` and from the youngest of the folders below it that are named by a day. Files that
/// a living program writes stay. Thread-safe.
void remove(const QString& folder);
/// The same on a thread of its own, which gives way to all other work and ends with the program.
void removeInBackground(const QString& folder);

} // namespace leftOverFiles

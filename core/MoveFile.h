#pragma once

#include <QString>

/// Gives a file a name of the same folder that nothing has yet. @return 0, EEXIST when the name is taken, or
/// another errno; the file has kept its old name then. Thread-safe.
int moveFile(const QString& from, const QString& to);

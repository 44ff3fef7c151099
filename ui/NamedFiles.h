#pragma once

#include <QStringList>

/// The names of some files for a notice: the first ones, shortened where they are long, and how many more
/// there are. GUI thread only.
QString namedFiles(const QStringList& paths);

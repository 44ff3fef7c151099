#pragma once

#include "PrintOrder.h"

#include <QImage>

/// Pictures as the printer prints them. Reentrant.
namespace printRaster {

inline constexpr int width = 384;          ///< dots of a line of paper
inline constexpr int heightAtMost = 65535; ///< lines that one command can hold

/// Reads a file and makes it fit: `width` dots wide, one bit a dot, 1 is black, the first dot is the highest
/// bit. Transparent parts become paper. A null picture with `problem` when that cannot be done.
QImage read(const QString& path, PrintResult& problem);

} // namespace printRaster

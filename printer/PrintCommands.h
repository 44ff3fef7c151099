#pragma once

#include "PrintOrder.h"

#include <QString>

/// What the printer is told, in the bytes of its language. Reentrant.
namespace printCommands {

/// Up to the first zero character, as UTF-8, with the styles that are set; two lines of paper after it.
PrintOrder text(const QString& text);
/// A CODE128 barcode with its text below. The text goes out as it is; its length in one byte.
PrintOrder barcode(const QString& text);
PrintOrder qrCode(const QString& text);
/// Reads the picture; dithered to black and white, as wide as the paper.
PrintOrder picture(const QString& path);

/// Letters n + 1 times as wide and as high; n from 0 to 7.
PrintOrder letterSize(int n);
PrintOrder bold(bool on);
PrintOrder whiteOnBlack(bool on);
PrintOrder upsideDown(bool on);
PrintOrder turned(bool on); ///< by 90 degrees

} // namespace printCommands

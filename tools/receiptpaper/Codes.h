#pragma once

#include <QByteArray>
#include <QImage>

/// Bar codes as a printer draws them, one pixel a module, 8-bit grey. Null for what no code can hold.
namespace codes {

/// CODE128, one pixel high. `text` may name code sets as printers want them: "{A", "{B", "{C", and "{{" for a
/// brace.
QImage barcode(const QByteArray& text);
/// What a reader says of such a code.
QByteArray barcodeContents(const QByteArray& text);
QImage qrCode(const QByteArray& text);

} // namespace codes

#pragma once

#include <QRect>

namespace windowPlace {

/// `window` moved, and made smaller where it has to be, so that it lies in `area`. What lies there already
/// stays as it is.
QRect inside(const QRect& window, const QRect& area);

} // namespace windowPlace

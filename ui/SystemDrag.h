#pragma once

#include <Qt>

class QWidget;

/// Hands a press of the left button over to the window manager, whose rules of snapping then hold; on some
/// desktops no program may place its windows itself. The release is delivered at once, because the real one
/// does not come back. GUI thread only.
namespace systemDrag {

bool move(QWidget& window);                    ///< false: not possible here
bool resize(QWidget& window, Qt::Edges edges); ///< false: not possible here

} // namespace systemDrag

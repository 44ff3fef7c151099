#pragma once

#include <QVector>

class QMenu;
class QWidget;

/// The controls of a bar that has no room for them, as entries of a menu. GUI thread only.
namespace toolMenu {

/// Fills `menu` anew: an entry with the same name, picture and state for each button and box of `tools`, a
/// list for each chooser. An entry does what the control does that it stands for. The tools outlive the menu.
void fill(QMenu& menu, const QVector<QWidget*>& tools);

} // namespace toolMenu

#pragma once

class QWidget;

/// Shows `window`, also a minimised one, above the other programs' windows; with the dialog that blocks it,
/// or else `foremost`, which may be the window itself, on top. Where the desktop forbids that, its entry in
/// the task bar asks for attention. GUI thread only.
void comeForward(QWidget& window, QWidget& foremost);

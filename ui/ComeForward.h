#pragma once

class QWidget;

/// Shows `window`, also a minimised one, above the program's and the other programs' windows, with the keys.
/// GUI thread only.
void comeForward(QWidget& window);

/// The same for the main window; with the dialog that blocks it, or else `foremost`, which may be the window
/// itself, on top. Where the desktop forbids that, its entry in the task bar asks for attention.
void comeForward(QWidget& window, QWidget& foremost);

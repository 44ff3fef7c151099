#pragma once

class QDialog;

/// Gives the toolkit's own dialogs (messages, files, printing) the frame of this program's windows.
namespace DialogFrame {

/// To be called before the dialog is shown; does nothing the second time and for windows with a frame of
/// their own.
void dress(QDialog& dialog);

} // namespace DialogFrame

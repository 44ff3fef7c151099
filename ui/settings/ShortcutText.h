#pragma once

#include <QKeySequence>
#include <QString>

/// Key combinations as they stand in the settings: in English, as in "Ctrl+Shift+S" or "F5".
namespace ShortcutText {

/// The combination that `text` names; empty for an empty text and for one that names none.
QKeySequence sequence(const QString& text);

} // namespace ShortcutText

#pragma once

#include <QKeySequence>
#include <QString>
#include <QStringList>
#include <QVector>

/// Key combinations as they stand in the settings: in English, as in "Ctrl+Shift+S" or "F5".
namespace ShortcutText {

/// The combination that `text` names; empty for an empty text and for one that names none.
QKeySequence sequence(const QString& text);

enum class Use {
    None,       ///< the text is empty
    Bound,      ///< works
    Unreadable, ///< names no key combination
    Taken,      ///< an earlier text has it, or the keys that it begins with
};

/// What becomes of each text when their combinations shall work side by side.
QVector<Use> uses(const QStringList& texts);

/// The earlier text whose combination keeps that of text `index` from working; -1 for none.
int ownerOf(const QStringList& texts, int index);

/// Whether the thumbnail strip has a use of its own for the combination.
bool isUsedByStrip(const QString& text);

} // namespace ShortcutText

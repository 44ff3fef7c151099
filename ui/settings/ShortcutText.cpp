#include "ShortcutText.h"

#include <algorithm>

QKeySequence ShortcutText::sequence(const QString& text)
{
    const QKeySequence sequence = QKeySequence::fromString(text.trimmed(), QKeySequence::PortableText);
    for (int i = 0; i < sequence.count(); ++i) {
        if ((sequence[uint(i)] & ~int(Qt::KeyboardModifierMask)) == Qt::Key_unknown)
            return {};
    }
    return sequence;
}

QVector<ShortcutText::Use> ShortcutText::uses(const QStringList& texts)
{
    QVector<Use> uses;
    QVector<QKeySequence> bound;
    for (const QString& text : texts) {
        const QKeySequence keys = sequence(text);
        // Of two combinations of which one begins the other, the longer would never be reached.
        const bool isTaken = std::any_of(bound.begin(), bound.end(), [&](const QKeySequence& other) {
            return keys.matches(other) != QKeySequence::NoMatch ||
                   other.matches(keys) != QKeySequence::NoMatch;
        });
        if (keys.isEmpty())
            uses.append(text.isEmpty() ? Use::None : Use::Unreadable);
        else
            uses.append(isTaken ? Use::Taken : Use::Bound);
        if (uses.last() == Use::Bound)
            bound.append(keys);
    }
    return uses;
}

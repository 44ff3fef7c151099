#include "ShortcutText.h"

QKeySequence ShortcutText::sequence(const QString& text)
{
    const QKeySequence sequence = QKeySequence::fromString(text.trimmed(), QKeySequence::PortableText);
    for (int i = 0; i < sequence.count(); ++i) {
        if ((sequence[uint(i)] & ~int(Qt::KeyboardModifierMask)) == Qt::Key_unknown)
            return {};
    }
    return sequence;
}

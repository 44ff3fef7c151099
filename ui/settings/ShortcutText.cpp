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

namespace {

// Of two combinations of which one begins the other, the longer would never be reached.
bool collide(const QKeySequence& a, const QKeySequence& b)
{
    return !a.isEmpty() && !b.isEmpty() &&
           (a.matches(b) != QKeySequence::NoMatch || b.matches(a) != QKeySequence::NoMatch);
}

} // namespace

int ShortcutText::ownerOf(const QStringList& texts, int index)
{
    for (int i = 0; i < index; ++i) {
        if (collide(sequence(texts[i]), sequence(texts[index])) && ownerOf(texts, i) < 0)
            return i;
    }
    return -1;
}

QVector<ShortcutText::Use> ShortcutText::uses(const QStringList& texts)
{
    QVector<Use> uses;
    for (int i = 0; i < texts.size(); ++i) {
        if (sequence(texts[i]).isEmpty())
            uses.append(texts[i].isEmpty() ? Use::None : Use::Unreadable);
        else
            uses.append(ownerOf(texts, i) < 0 ? Use::Bound : Use::Taken);
    }
    return uses;
}

bool ShortcutText::isUsedByStrip(const QString& text)
{
    const QKeySequence keys = sequence(text);
    const auto own = {QKeySequence(QKeySequence::Undo),
                      QKeySequence(QKeySequence::SelectAll),
                      QKeySequence(Qt::Key_F2),
                      QKeySequence(Qt::Key_R),
                      QKeySequence(Qt::SHIFT + Qt::Key_R),
                      QKeySequence(Qt::Key_C),
                      QKeySequence(Qt::Key_S),
                      QKeySequence(Qt::Key_Return),
                      QKeySequence(Qt::Key_Enter),
                      QKeySequence(Qt::Key_Up),
                      QKeySequence(Qt::Key_Down),
                      QKeySequence(Qt::Key_Left),
                      QKeySequence(Qt::Key_Right),
                      QKeySequence(Qt::Key_Home),
                      QKeySequence(Qt::Key_End),
                      QKeySequence(Qt::Key_PageUp),
                      QKeySequence(Qt::Key_PageDown)};
    return std::any_of(own.begin(), own.end(), [&](const QKeySequence& key) { return collide(keys, key); });
}

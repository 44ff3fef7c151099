#include "Shortcuts.h"

#include "Settings.h"
#include "ShortcutText.h"

#include <QShortcut>
#include <QWidget>

Shortcuts::Shortcuts(QWidget& host) : QObject(&host)
{
    for (const auto pressed :
         {&Shortcuts::scannerPressed, &Shortcuts::documentPressed, &Shortcuts::bookPressed}) {
        auto* shortcut = new QShortcut(&host);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, pressed);
        shortcuts_.append(shortcut);
    }
    rebind();
}

void Shortcuts::rebind()
{
    ConfigSettings store;
    const QStringList texts{settings::shortcutScanner.read(store),
                            settings::shortcutDocument.read(store),
                            settings::shortcutBook.read(store)};
    const QVector<ShortcutText::Use> uses = ShortcutText::uses(texts);
    for (int i = 0; i < shortcuts_.size(); ++i) {
        const bool isBound = uses[i] == ShortcutText::Use::Bound;
        shortcuts_[i]->setKey(isBound ? ShortcutText::sequence(texts[i]) : QKeySequence());
    }
}

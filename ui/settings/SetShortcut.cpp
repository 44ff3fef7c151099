#include "SetShortcut.h"

#include "Look.h"
#include "SettingBinding.h"
#include "ShortcutText.h"

#include "ui_SetShortcut.h"

#include <QStyle>

namespace {

void setMarked(QLineEdit& edit, bool marked)
{
    edit.setProperty("unusable", marked);
    edit.style()->unpolish(&edit); // the rules of the style sheet are looked up anew
    edit.style()->polish(&edit);
}

} // namespace

SetShortcut::SetShortcut(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui_SetShortcut>())
{
    ui_->setupUi(this);
    Look::dressFields(*ui_->frameBody);
    SettingBinding::tie(*ui_->editScanner, settings::shortcutScanner, settings_);
    ui_->editDocument->setText(settings::shortcutDocument.read(settings_));
    ui_->editBook->setText(settings::shortcutBook.read(settings_));
    // After the tie, which writes: who hears of the change finds it in the store.
    connect(ui_->editScanner, &QLineEdit::textChanged, this, [this] {
        markUnusable();
        Q_EMIT shortcutschanged();
    });
    markUnusable();
}

SetShortcut::~SetShortcut() = default;

void SetShortcut::markUnusable()
{
    using ShortcutText::Use;
    const QVector<QLineEdit*> edits{ui_->editScanner, ui_->editDocument, ui_->editBook};
    QStringList texts;
    for (const QLineEdit* edit : edits)
        texts.append(edit->text());
    const QVector<Use> uses = ShortcutText::uses(texts);
    for (int i = 0; i < edits.size(); ++i) {
        const bool isMarked = uses[i] == Use::Unreadable || uses[i] == Use::Taken;
        if (edits[i]->property("unusable").toBool() != isMarked)
            setMarked(*edits[i], isMarked);
        const QLabel* why = uses[i] == Use::Taken ? ui_->labelTaken : ui_->labelHint;
        edits[i]->setAccessibleDescription(isMarked ? why->text() : QString());
    }
    ui_->labelHint->setVisible(uses.contains(Use::Unreadable));
    ui_->labelTaken->setVisible(uses.contains(Use::Taken));
}

#include "SetShortcut.h"

#include "Look.h"
#include "SettingBinding.h"
#include "ShortcutText.h"

#include "ui_SetShortcut.h"

#include <QStyle>

namespace {

bool isUnusable(const QString& text)
{
    return !text.isEmpty() && ShortcutText::sequence(text).isEmpty();
}

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
    connect(ui_->editScanner, &QLineEdit::textChanged, this, &SetShortcut::markUnusable);
    markUnusable();
}

SetShortcut::~SetShortcut() = default;

void SetShortcut::markUnusable()
{
    bool anyMarked = false;
    for (QLineEdit* edit : {ui_->editScanner, ui_->editDocument, ui_->editBook}) {
        const bool unusable = isUnusable(edit->text());
        anyMarked = anyMarked || unusable;
        if (edit->property("unusable").toBool() == unusable)
            continue;
        setMarked(*edit, unusable);
        edit->setAccessibleDescription(unusable ? ui_->labelHint->text() : QString());
    }
    ui_->labelHint->setVisible(anyMarked);
}

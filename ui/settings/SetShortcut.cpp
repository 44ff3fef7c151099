#include "SetShortcut.h"

#include "Look.h"
#include "SettingBinding.h"
#include "ShortcutText.h"

#include "ui_SetShortcut.h"

#include <QDir>
#include <QSettings>
#include <QStyle>

namespace {

void setMarked(QLineEdit& edit, bool marked)
{
    edit.setProperty("unusable", marked);
    edit.style()->unpolish(&edit); // the rules of the style sheet are looked up anew
    edit.style()->polish(&edit);
}

// As beside the field, without the colon of the language.
QString nameOf(const QLabel& label)
{
    QString name = label.text();
    if (name.endsWith(QLatin1Char(':')) || name.endsWith(QChar(0xff1a)))
        name.chop(1);
    return name.trimmed();
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
    ui_->labelFile->setText(tr("The keys of \"%1\" and \"%2\" are set in the file %3, as Shortcut_Document "
                               "and Shortcut_Book. They "
                               "hold from the next start.")
                                .arg(nameOf(*ui_->labelDocument),
                                     nameOf(*ui_->labelBook),
                                     QDir::toNativeSeparators(settings_.GetSettings()->fileName())));
    markUnusable();
}

SetShortcut::~SetShortcut() = default;

void SetShortcut::markUnusable()
{
    using ShortcutText::Use;
    const QVector<QLineEdit*> edits{ui_->editScanner, ui_->editDocument, ui_->editBook};
    const QVector<QLabel*> names{ui_->labelScanner, ui_->labelDocument, ui_->labelBook};
    QStringList texts, taken;
    for (const QLineEdit* edit : edits)
        texts.append(edit->text());
    const QVector<Use> uses = ShortcutText::uses(texts);
    for (int i = 0; i < edits.size(); ++i) {
        QString why;
        if (uses[i] == Use::Unreadable)
            why = ui_->labelHint->text();
        else if (uses[i] == Use::Taken)
            taken << (why = takenText(
                          nameOf(*names[i]), texts, i, nameOf(*names[ShortcutText::ownerOf(texts, i)])));
        if (edits[i]->property("unusable").toBool() == why.isEmpty())
            setMarked(*edits[i], !why.isEmpty());
        edits[i]->setAccessibleDescription(why);
    }
    ui_->labelHint->setVisible(uses.contains(Use::Unreadable));
    ui_->labelTaken->setText(taken.join(QLatin1Char('\n')));
    ui_->labelTaken->setVisible(!taken.isEmpty());
    ui_->labelStrip->setText(
        tr("The strip of pictures uses %1 too, and no longer gets it.").arg(texts.first()));
    ui_->labelStrip->setVisible(ShortcutText::isUsedByStrip(texts.first()));
}

QString SetShortcut::takenText(const QString& name, const QStringList& texts, int index, const QString& owner)
{
    return tr("%1 does not start \"%2\", because \"%3\" has these keys.").arg(texts[index], name, owner);
}

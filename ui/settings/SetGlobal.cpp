#include "SetGlobal.h"

#include "ChineseLetters.h"
#include "Look.h"
#include "SettingBinding.h"

#include "ui_SetGlobal.h"

#include <QButtonGroup>
#include <QRegularExpression>
#include <QShowEvent>

namespace {

constexpr int longestInEdit = 40; // characters
constexpr int longestStored = 32;
constexpr int longestFileName = 128;

const QRegularExpression& forbidden()
{
    static const QRegularExpression characters(QStringLiteral(R"([\\/:*?"<>|])"));
    return characters;
}

/// Numbers the buttons from 0.
QButtonGroup* groupOf(QWidget* parent, std::initializer_list<QRadioButton*> buttons)
{
    auto* group = new QButtonGroup(parent);
    int id = 0;
    for (QRadioButton* button : buttons)
        group->addButton(button, id++);
    return group;
}

} // namespace

SetGlobal::SetGlobal(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui_SetGlobal>())
{
    ui_->setupUi(this);
    Look::dress(*ui_->frameBody);
    loadPrefix();
    loadChoices();
    loadLanguage();
}

SetGlobal::~SetGlobal() = default;

bool SetGlobal::IsCorrectFileName(const QString& name)
{
    return !forbidden().match(name).hasMatch() && name != QLatin1String(" ") && !name.isEmpty() &&
           name.size() <= longestFileName;
}

void SetGlobal::loadPrefix()
{
    ui_->editPrefix->setMaxLength(longestInEdit);
    ui_->editPrefix->setText(settings::namingPrefix.read(settings_));
    connect(ui_->editPrefix, &QLineEdit::textChanged, this, &SetGlobal::onPrefixChanged);
}

void SetGlobal::loadChoices()
{
    QButtonGroup* naming = groupOf(this, {ui_->radioSerialNumber, ui_->radioDateTime});
    SettingBinding::tie(*naming, settings::namingRules, settings_);
    QButtonGroup* scanType = groupOf(this,
                                     {ui_->radioOriginal,
                                      ui_->radioRemoveBackground,
                                      ui_->radioBinary,
                                      ui_->radioEnhance,
                                      ui_->radioRedSeal,
                                      ui_->radioBlueSeal});
    SettingBinding::tie(*scanType, settings::scanType, settings_);
    SettingBinding::tie(*ui_->checkDirByDate, settings::createDirByDate, settings_);
    SettingBinding::tie(*ui_->checkMarkUnsure, settings::markUnsure, settings_);
}

void SetGlobal::loadLanguage()
{
    // Each in its own language, so that a user who is lost in the others finds it.
    ui_->comboLanguage->addItems(
        {QStringLiteral("简体中文"), QStringLiteral("English"), QStringLiteral("Русский язык")});
    ui_->comboLanguage->setItemData(0, ChineseLetters::in(ui_->comboLanguage->font()), Qt::FontRole);
    SettingBinding::tie(*ui_->comboLanguage, settings::appLanguage, settings_);
    connect(ui_->comboLanguage,
            qOverload<int>(&QComboBox::currentIndexChanged),
            this,
            &SetGlobal::languageitemchanged);
}

void SetGlobal::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (ui_->editPrefix->text().isEmpty())
        ui_->editPrefix->setText(settings::namingPrefix.fallback);
}

void SetGlobal::onPrefixChanged(const QString& text)
{
    if (!text.isEmpty() && !IsCorrectFileName(text))
        showCleaned(text);
    if (text.size() > longestStored)
        return; // shown as it is typed, but the last shorter one stays in use
    if (text == QLatin1String(" "))
        ui_->editPrefix->setText(settings::namingPrefix.fallback); // comes back here and is stored
    else if (text.size() != 1 || IsCorrectFileName(text))
        settings::namingPrefix.write(settings_, text);
}

/// Takes the forbidden characters out of the edit and leaves the cursor where the user types.
void SetGlobal::showCleaned(const QString& text)
{
    QString before = text.left(ui_->editPrefix->cursorPosition());
    QString cleaned = text;
    cleaned.remove(forbidden());
    if (cleaned == text)
        return;
    ui_->editPrefix->setText(cleaned);
    ui_->editPrefix->setCursorPosition(before.remove(forbidden()).size());
    if (ui_->editPrefix->text().isEmpty())
        settings::namingPrefix.write(settings_, settings::namingPrefix.fallback);
}

#include "SettingBinding.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

namespace SettingBinding {

void tie(QCheckBox& box, const Setting<bool>& setting, ConfigSettings& settings)
{
    box.setChecked(setting.read(settings));
    QObject::connect(
        &box, &QCheckBox::toggled, &box, [&](bool checked) { setting.write(settings, checked); });
}

void tie(QComboBox& rows, const Setting<int>& setting, ConfigSettings& settings)
{
    rows.setCurrentIndex(setting.read(settings));
    QObject::connect(&rows, qOverload<int>(&QComboBox::currentIndexChanged), &rows, [&](int row) {
        setting.write(settings, row);
    });
}

void tie(QButtonGroup& choice, const Setting<int>& setting, ConfigSettings& settings)
{
    QAbstractButton* chosen = choice.button(setting.read(settings));
    (chosen ? chosen : choice.button(0))->setChecked(true);
    const auto write = [&](int id) { setting.write(settings, id); };
    QObject::connect(&choice, &QButtonGroup::idToggled, &choice, [write](int id, bool checked) {
        if (checked)
            write(id);
    });
    // A click on what is ticked already counts too: the store may hold no value yet, or another one.
    QObject::connect(&choice, &QButtonGroup::idClicked, &choice, write);
}

void tie(QLineEdit& edit, const Setting<QString>& setting, ConfigSettings& settings)
{
    edit.setText(setting.read(settings));
    QObject::connect(
        &edit, &QLineEdit::textChanged, &edit, [&](const QString& text) { setting.write(settings, text); });
}

} // namespace SettingBinding

#pragma once

#include "Settings.h"

#include <functional>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLineEdit;

/// Ties a control to its setting: shows the stored value, then writes every change at once. Showing writes
/// nothing. `settings` and the setting must outlive the control. GUI thread only.
namespace SettingBinding {

void tie(QCheckBox& box, const Setting<bool>& setting, ConfigSettings& settings);
/// The rows are the values; a value without a row selects none.
void tie(QComboBox& rows, const Setting<int>& setting, ConfigSettings& settings);
/// The ids are the values; a value without a button ticks the button 0, for that is how it is taken
/// elsewhere.
void tie(QButtonGroup& choice, const Setting<int>& setting, ConfigSettings& settings);
void tie(QLineEdit& edit, const Setting<QString>& setting, ConfigSettings& settings);

} // namespace SettingBinding

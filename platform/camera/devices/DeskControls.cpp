#include "DeskControls.h"

#include "ControlValue.h"

#include <algorithm>
#include <cmath>

namespace mirvak {
namespace {

// Ranges as those of usual cameras. The standards are where the pictures are as they lie in their files:
// there the lens is sharp, and there an automatic leads.
constexpr MirvakControlInfo delivered[] = {
    {MIRVAK_FOCUS_AUTO, MIRVAK_SWITCH, 0, 1, 1, 1, 1, 0, false},
    {MIRVAK_FOCUS, MIRVAK_RANGE, 0, 250, 5, 120, 0, 0, false},
    {MIRVAK_EXPOSURE_AUTO, MIRVAK_SWITCH, 0, 1, 1, 1, 1, 0, false},
    {MIRVAK_EXPOSURE_TIME, MIRVAK_RANGE, 1, 10000, 1, 156, 0, 0, false},
    {MIRVAK_GAIN, MIRVAK_RANGE, 0, 255, 1, 0, 0, 0, false},
    {MIRVAK_WHITE_BALANCE_AUTO, MIRVAK_SWITCH, 0, 1, 1, 1, 1, 0, false},
    {MIRVAK_WHITE_BALANCE, MIRVAK_RANGE, 2800, 6500, 10, 4600, 0, 0, false},
    {MIRVAK_BRIGHTNESS, MIRVAK_RANGE, -64, 64, 1, 0, 0, 0, false},
    {MIRVAK_CONTRAST, MIRVAK_RANGE, 0, 64, 1, 32, 0, 0, false},
    {MIRVAK_SATURATION, MIRVAK_RANGE, 0, 128, 1, 64, 0, 0, false},
    {MIRVAK_SHARPNESS, MIRVAK_RANGE, 0, 10, 1, 2, 0, 0, false},
    {MIRVAK_BACKLIGHT, MIRVAK_RANGE, 0, 2, 1, 0, 0, 0, false},
    {MIRVAK_ANTI_FLICKER, MIRVAK_MENU, 0, 2, 1, 1, 0, 0x7, false},
};

/// The share of the standard value, as a factor.
double factor(int control, int value)
{
    return static_cast<double>(value) / delivered[control].standard;
}

} // namespace

DeskControls::DeskControls()
{
    for (const MirvakControlInfo& info : delivered)
        values_[static_cast<size_t>(info.control)] = info.standard;
}

void DeskControls::offer(const std::vector<int>& controls)
{
    const std::lock_guard lock(mutex_);
    offered_ = controls;
}

bool DeskControls::isOffered(int control) const
{
    return std::find(offered_.begin(), offered_.end(), control) != offered_.end();
}

bool DeskControls::isHeld(int control) const
{
    const bool hasSwitch =
        control == MIRVAK_FOCUS || control == MIRVAK_EXPOSURE_TIME || control == MIRVAK_WHITE_BALANCE;
    return hasSwitch && isOffered(control - 1) && values_[static_cast<size_t>(control - 1)] != 0;
}

int DeskControls::valueOf(int control) const
{
    return isOffered(control) && !isHeld(control) ? values_[static_cast<size_t>(control)]
                                                  : delivered[control].standard;
}

std::vector<MirvakControl> DeskControls::list() const
{
    const std::lock_guard lock(mutex_);
    std::vector<MirvakControl> controls;
    for (const int control : offered_)
        controls.push_back(static_cast<MirvakControl>(control));
    return controls;
}

MirvakResult DeskControls::read(MirvakControl control, MirvakControlInfo& info) const
{
    const std::lock_guard lock(mutex_);
    if (!isOffered(control))
        return MIRVAK_BAD_ARGUMENT;
    info = delivered[control];
    info.value = valueOf(control);
    info.isHeld = isHeld(control);
    return MIRVAK_OK;
}

MirvakResult DeskControls::set(MirvakControl control, int value)
{
    const std::lock_guard lock(mutex_);
    if (!isOffered(control))
        return MIRVAK_BAD_ARGUMENT;
    if (isHeld(control))
        return MIRVAK_BUSY;
    const int allowed = allowedValue(delivered[control], value);
    // What the automatic has found stays when it is switched off.
    if (delivered[control].kind == MIRVAK_SWITCH && allowed == 0 &&
        values_[static_cast<size_t>(control)] != 0)
        values_[static_cast<size_t>(control) + 1] = delivered[control + 1].standard;
    values_[static_cast<size_t>(control)] = allowed;
    return MIRVAK_OK;
}

DeskTuning DeskControls::tuning() const
{
    const std::lock_guard lock(mutex_);
    DeskTuning tuning;
    const MirvakControlInfo& focus = delivered[MIRVAK_FOCUS];
    tuning.blur =
        std::abs(valueOf(MIRVAK_FOCUS) - focus.standard) / static_cast<double>(focus.maximum - focus.minimum);
    tuning.light =
        factor(MIRVAK_EXPOSURE_TIME, valueOf(MIRVAK_EXPOSURE_TIME)) * (1 + valueOf(MIRVAK_GAIN) / 64.0);
    tuning.red = factor(MIRVAK_WHITE_BALANCE, valueOf(MIRVAK_WHITE_BALANCE));
    tuning.blue = 1 / tuning.red;
    tuning.brightness = valueOf(MIRVAK_BRIGHTNESS);
    tuning.contrast = factor(MIRVAK_CONTRAST, valueOf(MIRVAK_CONTRAST));
    tuning.saturation = factor(MIRVAK_SATURATION, valueOf(MIRVAK_SATURATION));
    tuning.sharpness = (valueOf(MIRVAK_SHARPNESS) - delivered[MIRVAK_SHARPNESS].standard) * 0.25;
    tuning.gamma = 1 + valueOf(MIRVAK_BACKLIGHT) * 0.5;
    return tuning;
}

} // namespace mirvak

#include "V4l2Controls.h"

#include "ControlValue.h"
#include "V4l2Ioctl.h"

#include <linux/videodev2.h>

namespace mirvak {
namespace {

constexpr std::pair<MirvakControl, unsigned> table[] = {
    {MIRVAK_FOCUS_AUTO, V4L2_CID_FOCUS_AUTO},
    {MIRVAK_FOCUS, V4L2_CID_FOCUS_ABSOLUTE},
    {MIRVAK_EXPOSURE_AUTO, V4L2_CID_EXPOSURE_AUTO},
    {MIRVAK_EXPOSURE_TIME, V4L2_CID_EXPOSURE_ABSOLUTE}, // in 0.1 ms, as ours
    {MIRVAK_GAIN, V4L2_CID_GAIN},
    {MIRVAK_WHITE_BALANCE_AUTO, V4L2_CID_AUTO_WHITE_BALANCE},
    {MIRVAK_WHITE_BALANCE, V4L2_CID_WHITE_BALANCE_TEMPERATURE},
    {MIRVAK_BRIGHTNESS, V4L2_CID_BRIGHTNESS},
    {MIRVAK_CONTRAST, V4L2_CID_CONTRAST},
    {MIRVAK_SATURATION, V4L2_CID_SATURATION},
    {MIRVAK_SHARPNESS, V4L2_CID_SHARPNESS},
    {MIRVAK_BACKLIGHT, V4L2_CID_BACKLIGHT_COMPENSATION},
    {MIRVAK_ANTI_FLICKER, V4L2_CID_POWER_LINE_FREQUENCY}, // the menu's numbers are ours
};

bool isSwitch(MirvakControl control)
{
    return control == MIRVAK_FOCUS_AUTO || control == MIRVAK_EXPOSURE_AUTO ||
           control == MIRVAK_WHITE_BALANCE_AUTO;
}

MirvakResult resultOf(int error)
{
    switch (error) {
    case ENODEV:
    case ENXIO:
        return MIRVAK_NO_DEVICE;
    case EACCES: // set while its automatic is on
    case EBUSY:
        return MIRVAK_BUSY;
    default:
        return MIRVAK_IO_ERROR;
    }
}

/// The modes of exposure that leave the time to the camera.
bool isOn(MirvakControl control, int value)
{
    if (control == MIRVAK_EXPOSURE_AUTO)
        return value == V4L2_EXPOSURE_AUTO || value == V4L2_EXPOSURE_APERTURE_PRIORITY;
    return value != 0;
}

/// The first of two menu entries that is offered.
int firstOf(int entries, int better, int other)
{
    return entries & 1 << better ? better : entries & 1 << other ? other : -1;
}

} // namespace

int V4l2Controls::menuEntries(unsigned id, int minimum, int maximum) const
{
    int entries = 0;
    for (int value = std::max(minimum, 0); value <= std::min(maximum, 3); ++value) {
        v4l2_querymenu entry{};
        entry.id = id;
        entry.index = static_cast<uint32_t>(value);
        if (videoIoctl(fd_, VIDIOC_QUERYMENU, &entry) == 0)
            entries |= 1 << value;
    }
    return entries;
}

std::optional<V4l2Controls::Known> V4l2Controls::ask(MirvakControl control, unsigned id) const
{
    v4l2_queryctrl query{};
    query.id = id;
    if (videoIoctl(fd_, VIDIOC_QUERYCTRL, &query) != 0 ||
        query.flags & (V4L2_CTRL_FLAG_DISABLED | V4L2_CTRL_FLAG_READ_ONLY))
        return std::nullopt;
    Known known{control, id};
    if (query.type == V4L2_CTRL_TYPE_MENU)
        known.entries = menuEntries(id, query.minimum, query.maximum);
    if (control == MIRVAK_EXPOSURE_AUTO) {
        known.on = firstOf(known.entries, V4L2_EXPOSURE_APERTURE_PRIORITY, V4L2_EXPOSURE_AUTO);
        known.off = firstOf(known.entries, V4L2_EXPOSURE_MANUAL, V4L2_EXPOSURE_SHUTTER_PRIORITY);
        if (query.default_value == V4L2_EXPOSURE_AUTO)
            known.on = V4L2_EXPOSURE_AUTO;
    }
    const bool hasChoice =
        isSwitch(control) ? known.on >= 0 && known.off >= 0 : query.maximum > query.minimum;
    return hasChoice ? std::optional(known) : std::nullopt;
}

const std::vector<V4l2Controls::Known>& V4l2Controls::known()
{
    std::call_once(asked_, [this] {
        for (const auto& [control, id] : table) {
            if (const auto known = ask(control, id))
                known_.push_back(*known);
        }
    });
    return known_;
}

const V4l2Controls::Known* V4l2Controls::find(MirvakControl control)
{
    for (const Known& known : known()) {
        if (known.control == control)
            return &known;
    }
    return nullptr;
}

std::vector<MirvakControl> V4l2Controls::list()
{
    std::vector<MirvakControl> controls;
    for (const Known& known : known())
        controls.push_back(known.control);
    return controls;
}

MirvakResult V4l2Controls::read(MirvakControl control, MirvakControlInfo& info)
{
    const Known* const known = find(control);
    if (!known)
        return MIRVAK_BAD_ARGUMENT;
    v4l2_queryctrl query{};
    query.id = known->id;
    v4l2_control now{};
    now.id = known->id;
    if (videoIoctl(fd_, VIDIOC_QUERYCTRL, &query) != 0 || videoIoctl(fd_, VIDIOC_G_CTRL, &now) != 0)
        return resultOf(errno);
    info = {control,
            known->entries ? MIRVAK_MENU : MIRVAK_RANGE,
            query.minimum,
            query.maximum,
            std::max(query.step, 1),
            query.default_value,
            now.value,
            known->entries,
            (query.flags & (V4L2_CTRL_FLAG_INACTIVE | V4L2_CTRL_FLAG_GRABBED)) != 0};
    if (isSwitch(control)) {
        const bool wasOn = isOn(control, query.default_value);
        info = {control, MIRVAK_SWITCH, 0, 1, 1, wasOn, isOn(control, now.value), 0, info.isHeld};
    }
    return MIRVAK_OK;
}

MirvakResult V4l2Controls::set(MirvakControl control, int value)
{
    MirvakControlInfo info{};
    const MirvakResult result = read(control, info);
    if (result != MIRVAK_OK)
        return result;
    if (info.isHeld)
        return MIRVAK_BUSY;
    const Known& known = *find(control);
    v4l2_control wanted{};
    wanted.id = known.id;
    wanted.value = allowedValue(info, value);
    if (info.kind == MIRVAK_MENU && !(info.entries & 1 << wanted.value))
        return MIRVAK_BAD_ARGUMENT;
    if (info.kind == MIRVAK_SWITCH)
        wanted.value = wanted.value ? known.on : known.off;
    return videoIoctl(fd_, VIDIOC_S_CTRL, &wanted) == 0 ? MIRVAK_OK : resultOf(errno);
}

} // namespace mirvak

#include "ControlStore.h"

#include "Settings.h"

#include "mirvakcamera.h"

#include <QUrl>

namespace {

/// The keys of a camera's group, in the order of MirvakControl.
constexpr const char* keys[] = {"Focus_Auto",
                                "Focus",
                                "Exposure_Auto",
                                "Exposure_Time",
                                "Gain",
                                "White_Balance_Auto",
                                "White_Balance",
                                "Brightness",
                                "Contrast",
                                "Saturation",
                                "Sharpness",
                                "Backlight",
                                "Anti_Flicker"};
static_assert(std::size(keys) == MIRVAK_ANTI_FLICKER + 1);

} // namespace

// A stroke in an identity would begin a group within the group.
ControlStore::ControlStore(const QString& identity)
    : group_(QStringLiteral("Camera_") + QString::fromLatin1(QUrl::toPercentEncoding(identity)))
{
}

QMap<int, int> ControlStore::values()
{
    QMap<int, int> values;
    QSettings& settings = *store_.GetSettings();
    settings.beginGroup(group_);
    for (int control = 0; control <= MIRVAK_ANTI_FLICKER; ++control) {
        if (const auto value = settings::parse<int>(settings.value(QLatin1String(keys[control]))))
            values[control] = *value;
    }
    settings.endGroup();
    return values;
}

void ControlStore::keep(int control, int value)
{
    store_.GetSettings()->setValue(group_ + QLatin1Char('/') + QLatin1String(keys[control]), value);
}

void ControlStore::forget()
{
    store_.GetSettings()->remove(group_);
}

void restoreControls(MirvakCamera& camera, void* device, const QString& identity)
{
    const QMap<int, int> values = ControlStore(identity).values();
    for (auto value = values.begin(); value != values.end(); ++value)
        camera.MirvakDevice_SetControl(device, value.key(), value.value()); // held ones are refused
}

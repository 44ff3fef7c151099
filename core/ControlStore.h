#pragma once

#include "ConfigSettings.h"

#include <QMap>
#include <QString>

class MirvakCamera;

/// What the user has set at one camera: a group of the settings store named after the camera's identity. A
/// camera that nobody has changed has none.
class ControlStore
{
public:
    explicit ControlStore(const QString& identity);

    /// Values by MirvakControl, rising, so that an automatic stands before what it holds.
    QMap<int, int> values();
    void keep(int control, int value);
    void forget();

private:
    ConfigSettings store_;
    const QString group_;
};

/// Sets at an open camera what its user has set before; asks the camera nothing when that is nothing. What it
/// no longer offers is left out. GUI thread only.
void restoreControls(MirvakCamera& camera, void* device, const QString& identity);

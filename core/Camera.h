#pragma once

#include <QString>
#include <QVector>

/// A camera of the list, as the program speaks of it: by its identity, never by its place in some list.
struct Camera
{
    QString identity; ///< the same for as long as it is there, and again when it comes back
    QString name;     ///< what the user reads
    QString usbId;    ///< vendor and product, 8 lowercase hexadecimal digits; empty off the USB
    int type = 0;     ///< 1 main document camera, 2 other colour camera, 3 infrared

    bool isMain() const { return type == 1; }
};
using Cameras = QVector<Camera>;

inline bool operator==(const Camera& a, const Camera& b)
{
    return a.identity == b.identity && a.name == b.name && a.usbId == b.usbId && a.type == b.type;
}

/// Where it stands in the list, or -1.
inline int rowOf(const Cameras& cameras, const QString& identity)
{
    for (int row = 0; row < cameras.size(); ++row) {
        if (cameras[row].identity == identity)
            return row;
    }
    return -1;
}

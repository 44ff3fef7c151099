#pragma once

#include <linux/input-event-codes.h>

namespace mirvak {

/// The number that the library reports for a key of the kernel (KEY_...); 0 for keys that are not reported.
constexpr int keyNumber(unsigned code)
{
    switch (code) {
    case KEY_CAMERA:
        return 2;
    case KEY_ZOOMIN:
        return 8;
    case KEY_ZOOMOUT:
        return 9;
    default:
        return code > 9 ? static_cast<int>(code) : 0;
    }
}

} // namespace mirvak

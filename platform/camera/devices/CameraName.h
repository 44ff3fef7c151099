#pragma once

#include <string>

namespace mirvak {

/// What the user reads. The USB video driver joins product and function to "product: function" and cuts it
/// at 31 bytes; where the function only repeats the beginning of the product, the product is enough.
inline std::string cameraName(const std::string& driverName)
{
    const size_t colon = driverName.find(": ");
    if (colon == std::string::npos || colon == 0)
        return driverName;
    const std::string product = driverName.substr(0, colon);
    const std::string function = driverName.substr(colon + 2);
    return product.compare(0, function.size(), function) == 0 ? product : driverName;
}

} // namespace mirvak

#pragma once

#include "CameraBackend.h"

#include <filesystem>
#include <map>

namespace mirvak {

/// Camera type per USB id.
using TypeOverrides = std::map<std::string, int>;

/// Decides the type of each camera that has none yet: what `overrides` says; 3 for a camera that offers only
/// grey; 1 for a book-flat model. When no camera has become 1, the colour camera with the largest picture is;
/// every other is 2.
void assignTypes(std::vector<CameraInfo>& cameras, const TypeOverrides& overrides);

/// Reads `cameras = ( { usb = "abcd1234"; type = 2; } );` (libconfig). A missing file is empty; a broken one
/// is too and gets one line on standard error.
TypeOverrides readTypeOverrides(const std::filesystem::path& path);

} // namespace mirvak

#pragma once

#include "OcrModule.h"

#include <memory>

namespace mirvak {

/// A recogniser of the module beside this library, which is loaded at the first call and stays. Null when it
/// cannot be loaded (one line on standard error). Thread-safe.
std::unique_ptr<OcrModule> loadModule();

} // namespace mirvak

#pragma once

namespace mirvak {

/// A function of a module that lies beside the library into which this is linked. The
/// module is loaded when it is first asked for and stays. Null when it cannot be loaded: one line on standard
/// error, which begins with `who`. Thread-safe.
void* functionOfModule(const char* who, const char* file, const char* function);

} // namespace mirvak

#pragma once

#include <string>

namespace mirvak {

/// The folder of the library into which this is linked, with a slash at its end; empty when it cannot be
/// told. Thread-safe.
std::string ownFolder();

/// A function of a module that lies beside the library into which this is linked. The
/// module is loaded when it is first asked for and stays. Null when it cannot be loaded: one line on standard
/// error, which begins with `who`. Thread-safe.
void* functionOfModule(const char* who, const char* file, const char* function);

} // namespace mirvak

#include "LoadModule.h"

#include <dlfcn.h>

#include <cstdio>

namespace mirvak {

// A bare file name would be found by the library's run path only while nothing stands between it and
// dlopen(), as the sanitizers do.
std::string ownFolder()
{
    Dl_info own;
    if (dladdr(reinterpret_cast<const void*>(&ownFolder), &own) == 0)
        return {};
    const std::string path = own.dli_fname;
    return path.substr(0, path.rfind('/') + 1);
}

void* functionOfModule(const char* who, const char* file, const char* function)
{
    void* module = dlopen((ownFolder() + file).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* address = module ? dlsym(module, function) : nullptr;
    if (!address)
        std::fprintf(stderr, "%s: %s\n", who, dlerror());
    return address;
}

} // namespace mirvak

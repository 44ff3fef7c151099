#include "LoadModule.h"

#include <dlfcn.h>

#include <cstdio>
#include <string>

namespace mirvak {

namespace {

// The library that this code is linked into. A bare file name would be found by its run path only while
// nothing stands between it and dlopen(), as the sanitizers do.
std::string ownFolder()
{
    Dl_info own;
    if (dladdr(reinterpret_cast<const void*>(&loadModule), &own) == 0)
        return {};
    const std::string path = own.dli_fname;
    return path.substr(0, path.rfind('/') + 1);
}

MakeOcrModule load()
{
    void* module = dlopen((ownFolder() + ocrModuleFile).c_str(), RTLD_NOW | RTLD_LOCAL);
    void* make = module ? dlsym(module, makeOcrModuleName) : nullptr;
    if (!make)
        std::fprintf(stderr, "ocr: %s\n", dlerror());
    return reinterpret_cast<MakeOcrModule>(make);
}

} // namespace

std::unique_ptr<OcrModule> loadModule()
{
    static const MakeOcrModule make = load();
    return std::unique_ptr<OcrModule>(make ? make() : nullptr);
}

} // namespace mirvak

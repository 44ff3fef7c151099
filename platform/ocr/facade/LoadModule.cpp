#include "LoadModule.h"

#include <dlfcn.h>

#include <cstdio>

namespace mirvak {

namespace {

// Found by the run path of this library, its own folder.
MakeOcrModule load()
{
    void* module = dlopen(ocrModuleFile, RTLD_NOW | RTLD_LOCAL);
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

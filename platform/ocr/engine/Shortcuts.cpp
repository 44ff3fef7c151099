// Steps of Tesseract that cost much time and come to nothing here. It finds these functions before those that
// do the step; where it finds the others, it reads the same and is slower.
#include "Shortcuts.h"

#include <leptonica/allheaders.h>

#include <dlfcn.h>

#define LUMRO_FOUND_FIRST __attribute__((visibility("default")))

namespace tesseract {

class TFile;
class UNICHARSET;

class UnicharAmbigs
{
public:
    LUMRO_FOUND_FIRST void
    LoadUnicharAmbigs(const UNICHARSET& from, TFile* file, int debug, bool forAdaption, UNICHARSET* all);
};

// A table of shapes that look alike, which only the recogniser of single shapes asks. To put it in order
// takes three quarters of the time for loading a model with Latin letters.
void UnicharAmbigs::LoadUnicharAmbigs(const UNICHARSET&, TFile*, int, bool, UNICHARSET*) {}

} // namespace tesseract

namespace {
thread_local bool areBare = false;
}

namespace mirvak {

BarePixels::BarePixels() : before_(areBare)
{
    areBare = true;
}

BarePixels::~BarePixels()
{
    areBare = before_;
}

} // namespace mirvak

extern "C" LUMRO_FOUND_FIRST l_ok pixWriteMem(l_uint8** data, size_t* size, Pix* pix, l_int32 format)
{
    if (areBare && format == IFF_PNG)
        return pixWriteMemSpix(data, size, pix);
    static const auto other = reinterpret_cast<decltype(&pixWriteMem)>(dlsym(RTLD_NEXT, "pixWriteMem"));
    return other ? other(data, size, pix, format) : 1;
}

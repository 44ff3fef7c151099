// Colour processing of whole pages.
#include "Background.h"
#include "Enhance.h"
#include "Impl.h"
#include "Seal.h"
#include "Threshold.h"
#include "imageCalls.h"

using mirvak::Image;

namespace {

// All of these work in place and cannot fail on a picture that exists.
template <class Process> int process(const char* name, void* handle, Process&& run)
{
    return mirvak::onOwnImage(name, handle, [&](Image& image) {
        run(image);
        return MIRVAK_OK;
    });
}

} // namespace

int MirvakCamera::MirvakImage_DelBGColor(void* image)
{
    return process("MirvakImage_DelBGColor", image, mirvak::removeBackground);
}

int MirvakCamera::MirvakImage_Threshold(void* image)
{
    return process("MirvakImage_Threshold", image, mirvak::threshold);
}

int MirvakCamera::MirvakImage_EnhanceColor(void* image)
{
    return process("MirvakImage_EnhanceColor", image, mirvak::enhanceColour);
}

int MirvakCamera::MirvakImage_WhitePaperSeal(void* image, int seal)
{
    return mirvak::onOwnImage("MirvakImage_WhitePaperSeal", image, [&](Image& stamped) {
        if (seal != 0 && seal != 1)
            return MIRVAK_BAD_ARGUMENT;
        mirvak::strengthenSeal(stamped, seal == 0 ? mirvak::SealColour::red : mirvak::SealColour::blue);
        return MIRVAK_OK;
    });
}

int MirvakCamera::MirvakImage_DocumentProcess(void* image)
{
    return process("MirvakImage_DocumentProcess", image, mirvak::processDocument);
}

// Bar and matrix codes.
#include "Impl.h"
#include "imageCalls.h"

#include <dlfcn.h>

using mirvak::Image;

namespace {

// The decoding program lies beside this library.
std::string helperPath()
{
    Dl_info here{};
    if (dladdr(reinterpret_cast<const void*>(&helperPath), &here) == 0 || !here.dli_fname)
        return "mirvakcodes";
    const std::string library = here.dli_fname;
    return library.substr(0, library.rfind('/') + 1) + "mirvakcodes";
}

} // namespace

int MirvakCamera::MirvakZBarcode_Discern(void* image)
{
    return MirvakZBarcode_DiscernWatched(image, nullptr, nullptr);
}

int MirvakCamera::MirvakZBarcode_DiscernWatched(void* image, MirvakProgressCallback progress, void* context)
{
    constexpr int parts = 1000;
    impl_->codes.clear();
    return mirvak::onImage("MirvakZBarcode_Discern", image, [&](const Image& source) -> int {
        bool isStopped = false;
        const auto goesOn = [&](double share) {
            isStopped = isStopped || (progress && progress(int(share * parts), parts, context) != 0);
            return !isStopped;
        };
        std::vector<mirvak::Code> codes = mirvak::CodeReader(helperPath()).read(source.pixels, goesOn);
        if (isStopped)
            return MIRVAK_STOPPED;
        impl_->codes = std::move(codes);
        return static_cast<int>(impl_->codes.size());
    });
}

std::string MirvakCamera::MirvakZBarcode_GetData(int index)
{
    const auto& codes = impl_->codes;
    return index >= 0 && index < static_cast<int>(codes.size()) ? codes[static_cast<size_t>(index)].text
                                                                : std::string();
}

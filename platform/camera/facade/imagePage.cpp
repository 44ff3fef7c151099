// The page in the picture: found, drawn, straightened, watched for; and text upon it.
#include "Deskew.h"
#include "Impl.h"
#include "OutlineDrawing.h"
#include "Watermark.h"
#include "imageCalls.h"

#include <cmath>
#include <cstdio>

using mirvak::Image;

int MirvakCamera::MirvakImage_Deskew(void* image, int margin)
{
    return mirvak::onRemadeImage("MirvakImage_Deskew", image, [&](Image& page) {
        if (margin < 0)
            return MIRVAK_BAD_ARGUMENT;
        mirvak::deskew(page, margin);
        return MIRVAK_OK;
    });
}

void* MirvakCamera::MirvakImage_DrawLine(void* image, int colour, int width)
{
    void* result = nullptr;
    mirvak::onImage("MirvakImage_DrawLine", image, [&](const Image& source) {
        auto copy = impl_->pool.take(source.pixels.cols, source.pixels.rows);
        source.pixels.copyTo(copy->pixels);
        copy->dpi = source.dpi;
        mirvak::drawOutline(source.pixels, copy->pixels, static_cast<unsigned>(colour), width);
        result = copy.release();
        return MIRVAK_OK;
    });
    return result;
}

int MirvakCamera::MirvakImage_CheckPage(void* image, bool& flag, double& value, bool reset, double threshold)
{
    flag = true;
    value = 0;
    return mirvak::onImage("MirvakImage_CheckPage", image, [&](const Image& source) {
        if (reset)
            impl_->pageCheck.reset();
        const auto taken = source.taken.value_or(std::chrono::steady_clock::now());
        const mirvak::PageCheck::Result result = impl_->pageCheck.check(source.pixels, threshold, taken);
        flag = !result.newPage;
        value = result.difference;
        return MIRVAK_OK;
    });
}

int MirvakCamera::MirvakImage_Watermark(
    void* image, const char* text, MirvakPointF anchor, int fontSize, int colour, float angle)
{
    constexpr int largestFont = 4000; // pixels; the library's coordinates end soon after
    return mirvak::onOwnImage("MirvakImage_Watermark", image, [&](Image& stamped) {
        const bool finite = std::isfinite(anchor.x) && std::isfinite(anchor.y) && std::isfinite(angle);
        if (!text || !finite || fontSize < 1 || fontSize > largestFont)
            return MIRVAK_BAD_ARGUMENT;
        const mirvak::TextStyle style{fontSize, static_cast<unsigned>(colour), angle};
        if (!mirvak::drawText(stamped, text, {anchor.x, anchor.y}, style)) {
            std::fprintf(stderr, "MirvakImage_Watermark: no font is installed\n");
            return MIRVAK_IO_ERROR;
        }
        return MIRVAK_OK;
    });
}

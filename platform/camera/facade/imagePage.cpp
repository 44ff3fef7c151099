// The page in the picture: found, drawn, straightened, watched for; and text upon it.
#include "BookFlat.h"
#include "Deskew.h"
#include "Impl.h"
#include "OutlineDrawing.h"
#include "OutlineWatch.h"
#include "SheetFinder.h"
#include "Watermark.h"
#include "imageCalls.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

using mirvak::Image;

namespace {

MirvakOutline outlineOf(const mirvak::Outline& found)
{
    MirvakOutline outline{};
    std::transform(found.corners.begin(), found.corners.end(), outline.corners, [](const cv::Point2d& p) {
        return MirvakPointF{static_cast<float>(p.x), static_cast<float>(p.y)};
    });
    return outline;
}

// Frame after frame comes on the camera's thread.
mirvak::OutlineWatch& streamWatch()
{
    thread_local mirvak::OutlineWatch watch;
    return watch;
}

void drawOutlines(cv::Mat& rgb, const std::vector<MirvakOutline>& outlines, int colour, int width)
{
    for (const MirvakOutline& outline : outlines) {
        std::array<cv::Point2d, 4> corners;
        std::transform(outline.corners, outline.corners + 4, corners.begin(), [](const MirvakPointF& p) {
            return cv::Point2d(p.x, p.y);
        });
        mirvak::drawOutline(rgb, corners, static_cast<unsigned>(colour), width);
    }
}

MirvakShot shotOf(const mirvak::Verdict& verdict)
{
    using State = mirvak::Verdict::State;
    switch (verdict.state) {
    case State::noPage:
        return MIRVAK_SHOT_NO_PAGE;
    case State::looking:
        return MIRVAK_SHOT_LOOKING;
    case State::good:
        return MIRVAK_SHOT_GOOD;
    case State::flawed:
        break;
    }
    constexpr int firstFlaw = MIRVAK_SHOT_LEAVES_PICTURE; // both lists go on in the same order
    static_assert(firstFlaw + static_cast<int>(mirvak::Flaw::notSure) == MIRVAK_SHOT_NOT_SURE);
    return static_cast<MirvakShot>(firstFlaw + static_cast<int>(verdict.flaw));
}

} // namespace

int MirvakCamera::MirvakImage_Deskew(void* image, int margin)
{
    return mirvak::onRemadeImage("MirvakImage_Deskew", image, [&](Image& page) {
        if (margin < 0)
            return MIRVAK_BAD_ARGUMENT;
        mirvak::deskew(page, margin);
        return MIRVAK_OK;
    });
}

int MirvakCamera::MirvakImage_DeskewAll(void* image, int margin, std::vector<void*>& pages)
{
    pages.clear();
    return mirvak::onImage("MirvakImage_DeskewAll", image, [&](const Image& source) {
        if (margin < 0)
            return MIRVAK_BAD_ARGUMENT;
        std::vector<std::unique_ptr<Image>> owned;
        for (Image& page : mirvak::deskewAll(source, margin))
            owned.push_back(std::make_unique<Image>(std::move(page)));
        pages.reserve(owned.size());
        for (std::unique_ptr<Image>& page : owned)
            pages.push_back(page.release());
        return pages.empty() ? MIRVAK_NOT_FOUND : MIRVAK_OK;
    });
}

int MirvakCamera::MirvakImage_BookFlat(
    void* image, bool removeFinger, int pageMode, void*& left, void*& right)
{
    left = nullptr;
    right = nullptr;
    return mirvak::onImage("MirvakImage_BookFlat", image, [&](const Image& source) {
        constexpr int together = 1, parted = 2;
        if (pageMode != together && pageMode != parted)
            return MIRVAK_BAD_ARGUMENT;
        auto pages = mirvak::flattenBook(source, removeFinger, pageMode == parted);
        if (!pages)
            return MIRVAK_NOT_FOUND;
        auto first = std::make_unique<Image>(std::move(pages->left));
        auto second = pages->right ? std::make_unique<Image>(std::move(*pages->right)) : nullptr;
        left = first.release();
        right = second.release();
        return MIRVAK_OK;
    });
}

int MirvakCamera::MirvakImage_FindPages(void* image, std::vector<MirvakOutline>& outlines)
{
    outlines.clear();
    return mirvak::onImage("MirvakImage_FindPages", image, [&](const Image& source) {
        for (const mirvak::Outline& sheet : mirvak::findSheets(source.pixels))
            outlines.push_back(outlineOf(sheet));
        return outlines.empty() ? MIRVAK_NOT_FOUND : MIRVAK_OK;
    });
}

void* MirvakCamera::MirvakImage_DrawLine(void* image, int colour, int width)
{
    void* result = nullptr;
    mirvak::onImage("MirvakImage_DrawLine", image, [&](const Image& source) {
        const auto found = streamWatch().find(source.pixels, source.taken);
        auto copy = impl_->pool.take(source.pixels.cols, source.pixels.rows);
        source.pixels.copyTo(copy->pixels);
        copy->dpi = source.dpi;
        if (found)
            drawOutlines(copy->pixels, {outlineOf(*found)}, colour, width);
        result = copy.release();
        return MIRVAK_OK;
    });
    return result;
}

int MirvakCamera::MirvakImage_JudgePage(void* image, MirvakVerdict& verdict)
{
    verdict = {};
    return mirvak::onImage("MirvakImage_JudgePage", image, [&](const Image& source) {
        const auto found = streamWatch().find(source.pixels, source.taken);
        const auto taken = source.taken.value_or(std::chrono::steady_clock::now());
        const mirvak::Verdict judged =
            impl_->shotVerdict.judge(source.pixels, found, taken, streamWatch().mayLeavePicture());
        verdict.shot = shotOf(judged);
        verdict.found = found.has_value();
        verdict.page = found ? outlineOf(*found) : MirvakOutline{};
        return MIRVAK_OK;
    });
}

int MirvakCamera::MirvakImage_DrawOutlines(void* image,
                                           const std::vector<MirvakOutline>& outlines,
                                           int colour,
                                           int width)
{
    return mirvak::onOwnImage("MirvakImage_DrawOutlines", image, [&](Image& marked) {
        drawOutlines(marked.pixels, outlines, colour, width);
        return MIRVAK_OK;
    });
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

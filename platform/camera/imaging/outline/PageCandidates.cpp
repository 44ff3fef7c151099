#include "PageCandidates.h"

namespace mirvak {

namespace {

constexpr size_t mostLines = 72;

} // namespace

const std::vector<QuadFinder::Quad>& PageCandidates::find(const cv::Mat& rgb, const cv::Mat* mapped)
{
    map_.build(look_.build(mapped ? *mapped : rgb));
    const SmallLook::Planes& planes = mapped ? look_.build(rgb) : look_.planes();
    const SheetMap* asked = asksMap_ ? &map_ : nullptr;
    edges_.build(planes, asked ? map_.quiet() : cv::Mat(), map_.cell());
    regions_.build(planes, edges_.change());
    const auto& lines = lines_.find(edges_, planes, regions_, mostLines, asked);
    quads_.find(lines, look_.reduction().size(), QuadFinder::Search::page, asked);
    if (asked)
        addFromMap(map_, edges_, planes, quads_);
    return quads_.quads();
}

} // namespace mirvak

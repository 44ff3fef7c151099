#include "PageCandidates.h"

#include "SideSearch.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr size_t mostLines = 72;
constexpr size_t mostWidened = 2; // outlines

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

const std::vector<QuadFinder::Quad>& PageCandidates::widen(const std::vector<Outline>& likely)
{
    for (size_t i = 0; i < std::min(mostWidened, likely.size()); ++i)
        addChanged(snapSides(edges_, likely[i].corners));
    for (const SheetMap::Corners& shown : map_.quadrilaterals()) {
        const SheetMap::Corners placed =
            snapSides(edges_, snapSides(edges_, shown, 3 * map_.cell()), map_.cell());
        quads_.add(placed, edges_, planes());
        addChanged(placed);
    }
    return quads_.quads();
}

void PageCandidates::addChanged(const SheetMap::Corners& corners)
{
    for (size_t side = 0; side < corners.size(); ++side) {
        for (const SheetMap::Corners& changed : withSideOnEdges(edges_, corners, side))
            quads_.add(changed, edges_, planes());
        for (const SheetMap::Corners& changed : withSideByFormat(planes()[0].size(), corners, side))
            quads_.add(changed, edges_, planes());
    }
}

} // namespace mirvak

#pragma once

#include "EdgeField.h"
#include "LineFinder.h"
#include "QuadFinder.h"
#include "RegionField.h"
#include "SheetMap.h"
#include "SmallLook.h"

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// All that may be the outline of the one page in a picture, and what was seen on the way to it. Keeps its
/// buffers; one thread at a time.
class PageCandidates
{
public:
    /// @param asksMap  whether the map tells where to look; it is made all the same
    explicit PageCandidates(bool asksMap = true) : asksMap_(asksMap) {}

    /// In the small picture. `rgb`: CV_8UC3, one that SmallLook::canHoldPage().
    /// @param mapped  the picture that the map is made of instead: what is learnt must not trust it blindly
    const std::vector<QuadFinder::Quad>& find(const cv::Mat& rgb, const cv::Mat* mapped = nullptr);

    /// Puts beside what the last find() answered what `likely` outlines and those of the map would be if one
    /// of their sides lay elsewhere: for pictures in which none of the outlines is convincing.
    const std::vector<QuadFinder::Quad>& widen(const std::vector<Outline>& likely);

    const std::vector<QuadFinder::Quad>& quads() const { return quads_.quads(); }
    const SmallLook& look() const { return look_; }
    const SmallLook::Planes& planes() const { return look_.planes(); }
    const EdgeField& edges() const { return edges_; }
    const RegionField& regions() const { return regions_; }
    const SheetMap& map() const { return map_; }

private:
    void addChanged(const SheetMap::Corners& corners);

    bool asksMap_;
    SmallLook look_;
    EdgeField edges_;
    RegionField regions_;
    LineFinder lines_;
    QuadFinder quads_;
    SheetMap map_;
};

} // namespace mirvak

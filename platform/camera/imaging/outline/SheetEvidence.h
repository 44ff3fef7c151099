#pragma once

#include "DeskColours.h"
#include "QuadFinder.h"
#include "RegionField.h"
#include "SheetMap.h"
#include "SmallLook.h"

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// What speaks for and against an outline being that of a sheet, as numbers of about 0 to 1. The last is 1.
constexpr size_t evidenceCount = 38;
using Evidence = std::array<float, evidenceCount>;

/// Of each of the `quads`, in the small picture.
void gatherEvidence(const std::vector<QuadFinder::Quad>& quads,
                    const SmallLook::Planes& planes,
                    const RegionField& regions,
                    const DeskColours& desk,
                    std::vector<Evidence>& evidence);

/// The same with what the map of the one page says, which knows nothing of its neighbours. The last is 1.
constexpr size_t pageEvidenceCount = evidenceCount + 9;
using PageEvidence = std::array<float, pageEvidenceCount>;

void gatherPageEvidence(const std::vector<QuadFinder::Quad>& quads,
                        const SheetMap& map,
                        const std::vector<Evidence>& evidence,
                        std::vector<PageEvidence>& pageEvidence);

} // namespace mirvak

#pragma once

#include "QuadFinder.h"
#include "RegionField.h"
#include "SheetMap.h"
#include "SmallLook.h"

#include <opencv2/core.hpp>

#include <array>
#include <bitset>
#include <vector>

namespace mirvak {

/// The colours of the desk, learnt from the rim of the picture: a sheet may reach it somewhere, not
/// everywhere.
class DeskColours
{
public:
    void learn(const SmallLook::Planes& planes);
    bool contain(const std::array<int, 3>& colour) const { return usual_[indexOf(colour)]; }

private:
    static constexpr int bits = 4;
    static size_t indexOf(const std::array<int, 3>& colour)
    {
        return (static_cast<size_t>(colour[0] >> (8 - bits)) << 2 * bits) |
               (static_cast<size_t>(colour[1] >> (8 - bits)) << bits) |
               static_cast<size_t>(colour[2] >> (8 - bits));
    }
    std::vector<int> counts_;
    std::bitset<1 << 3 * bits> usual_;
};

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

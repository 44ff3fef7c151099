#pragma once

#include "SheetEvidence.h"

#include <vector>

namespace mirvak {

/// What speaks for and against an outline when not all of its sides need to be seen: the PageEvidence, and
/// whether something else tells where they lie. The last is 1.
constexpr size_t secondEvidenceCount = pageEvidenceCount + 4;
using SecondEvidence = std::array<float, secondEvidenceCount>;

/// Of each of the `quads`, in the small picture.
void gatherSecondEvidence(const std::vector<QuadFinder::Quad>& quads,
                          const SmallLook::Planes& planes,
                          const std::vector<PageEvidence>& pageEvidence,
                          std::vector<SecondEvidence>& secondEvidence);

} // namespace mirvak

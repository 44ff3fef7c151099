#pragma once

#include "EdgeField.h"
#include "QuadFinder.h"
#include "SheetEvidence.h"

#include <opencv2/core.hpp>

#include <array>
#include <vector>

namespace mirvak {

/// Decides which of many likely outlines are sheets of their own: not several sheets taken for one, not the
/// desk between them, not what is printed on one. Coordinates are those of the small picture.
class SheetChoice
{
public:
    using Planes = std::array<cv::Mat, 3>;
    using Quad = QuadFinder::Quad;

    void clear();
    /// Chooses among `quads`, best first, beside what was chosen since clear(). @return the new ones
    std::vector<Outline> choose(const std::vector<Quad>& quads, const EdgeField& edges, const Planes& planes, const RegionField& regions);
    /// All that were chosen.
    const std::vector<Outline>& sheets() const { return sheets_; }
    /// Whether one of them is half of an open book of which the other half was not chosen.
    bool losesPage(const EdgeField& edges, const Planes& planes) const;

private:
    bool isSheet(const Quad& quad, const std::vector<Quad>& quads, const Planes& planes) const;
    bool isFree(const Quad& quad) const;

    DeskColours desk_;
    std::vector<Evidence> evidence_;
    std::vector<Outline> sheets_;
};

} // namespace mirvak

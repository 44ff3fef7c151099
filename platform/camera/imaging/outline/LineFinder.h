#pragma once

#include "EdgeLine.h"

#include <opencv2/core.hpp>

#include <utility>
#include <vector>

namespace mirvak {

class SheetMap;

/// Finds the straight edges of a small picture: a Hough transform in which each edge point votes only for
/// lines along its own direction (O'Gorman and Clowes 1976), then a fit to the points themselves. Keeps its
/// buffers; one thread at a time.
class LineFinder
{
public:
    /// The longest edges, best first, at most `most`. With a `map` of the picture, some of them are those
    /// along which it shows the borders of sheets.
    const std::vector<EdgeLine>& find(const EdgeField& field,
                                      const EdgeLine::Planes& planes,
                                      const RegionField& regions,
                                      size_t most,
                                      const SheetMap* map = nullptr);

private:
    struct Peak
    {
        int votes, angle, offset;
    };
    void vote(const EdgeField& field);
    void findPeaks(size_t most);
    void addLine(const Peak& peak,
                 const EdgeField& field,
                 const EdgeLine::Planes& planes,
                 const RegionField& regions);

    void dropRepeated(const EdgeField& field, size_t most, const SheetMap* map);
    size_t claimNext(size_t next, size_t kept);

    cv::Mat votes_, claimed_;
    std::vector<Peak> peaks_;
    std::vector<EdgeLine> lines_, sorted_;
    std::vector<std::pair<double, size_t>> orders_; ///< worth of a line, and its place
    std::vector<cv::Point2f> work_;
    int offsets_ = 0;
};

} // namespace mirvak

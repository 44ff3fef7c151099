#pragma once

#include "QuadFinder.h"
#include "SheetNet.h"

#include <opencv2/core.hpp>

#include <algorithm>
#include <array>
#include <vector>

namespace mirvak {

/// A coarse map of where the topmost whole sheet lies, as a network sees it: it knows what sheets look like
/// where edges say little, but not to the pixel where they end. Evidence beside others, and where to look.
/// Coordinates are those of the small picture. Keeps its buffers; one thread at a time.
class SheetMap
{
public:
    using Planes = std::array<cv::Mat, 3>;
    using Corners = std::array<cv::Point2d, 4>;

    /// `planes`: three CV_8UC1 of one size, red, green and blue.
    void build(const Planes& planes);

    /// Shares of certainty that a cell lies on the sheet, and that it lies at its border: CV_32FC1, 0 to 1.
    const cv::Mat& inside() const { return inside_; }
    const cv::Mat& border() const { return border_; }
    /// Pixels of the small picture to one cell, both ways.
    int cell() const { return cell_; }
    /// Cells far from all sheets, 255: CV_8UC1, else 0. Empty as long as no sheet is seen for sure: there may
    /// be one that the network does not know. (Of what it takes for the inside of a sheet, some may be a desk
    /// as white as paper.)
    const cv::Mat& quiet() const { return quiet_; }

    /// How well an outline agrees with the map; all 0 to 1.
    struct Fit
    {
        double overlap = 0; ///< certainty shared with the outline, over that joined with it
        double filled = 0;  ///< mean certainty inside
        double holds = 0;   ///< share of all certainty that lies inside
        double border = 0;  ///< mean certainty of a border along the sides that can be seen
        double leastBorder = 1;
        double step = 0; ///< how much the certainty falls across the sides that can be seen, mean
        double leastStep = 1;
    };
    Fit fitOf(const Corners& corners) const;
    /// Much the same from a few places only, 0 to 1: for thousands of outlines.
    double glanceAt(const Corners& corners) const;
    /// How sure a border is at a point.
    double borderAt(const cv::Point2d& point) const { return nearest(border_, point); }
    /// How much of the picture is sheet, 0 to 1.
    double share() const;
    /// Whether a sheet runs out of the picture: it is seen along a part of the picture's border that is wider
    /// than an arm, and so are sides of it. An even desk may look like a sheet, but has none.
    bool hasSheetAtBorder() const;

    /// The quadrilaterals about what the map shows most surely, clockwise; good to some pixels. First those
    /// about all that is sheet, then those about what borders cut out of it. None where nothing has four
    /// sides.
    std::vector<Corners> quadrilaterals() const;

private:
    void fillLook(const Planes& planes);
    double at(const cv::Mat& map, const cv::Point2d& point) const;
    double nearest(const cv::Mat& map, const cv::Point2d& point) const
    {
        const int x = std::clamp(static_cast<int>((point.x + 0.5) / cell_), 0, map.cols - 1);
        const int y = std::clamp(static_cast<int>((point.y + 0.5) / cell_), 0, map.rows - 1);
        return map.ptr<float>(y)[x];
    }
    void sumRows();
    int longestAtBorder() const;
    void findQuiet();

    SheetNet net_;
    cv::Mat inside_, border_, sums_, quiet_;
    std::array<cv::Mat, 3> reducedPlanes_;
    int cell_ = 1;
};

/// Puts the outlines that the map shows, placed on edges near them, beside those that long edges make.
void addFromMap(const SheetMap& map,
                const EdgeField& edges,
                const SheetMap::Planes& planes,
                QuadFinder& quads);

} // namespace mirvak

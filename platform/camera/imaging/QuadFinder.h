#pragma once

#include "LineFinder.h"
#include "Outline.h"

#include <opencv2/core.hpp>

#include <array>
#include <optional>
#include <vector>

namespace mirvak {

/// Puts straight edges together to the quadrilateral that is most likely the outline of a page. Coordinates
/// are those of the small picture. Keeps its buffers; one thread at a time.
class QuadFinder
{
public:
    /// `planes`: the small picture whose edges the lines are.
    std::optional<Outline> find(const std::vector<EdgeLine>& lines, const std::array<cv::Mat, 3>& planes);

    struct Side
    {
        const EdgeLine* line = nullptr;
        double from = 0, to = 0; ///< positions of the two corners on the line
    };
    struct Quad
    {
        std::array<cv::Point2d, 4> corners; ///< clockwise
        std::array<Side, 4> sides;          ///< side i runs from corner i to corner i + 1
        double score = 0;
        double area = 0; ///< share of the picture
    };

private:
    struct Corner
    {
        cv::Point2d point;
        double t[2]; ///< positions on the two lines, lower index first
        bool possible = false;
    };
    void collectLines(const std::vector<EdgeLine>& lines, const cv::Size& size);
    void findCorners(const cv::Size& size);
    void tryQuads();
    void tryQuad(size_t a, size_t b, size_t c, size_t d);
    void keep(const Quad& quad);
    const Corner& corner(size_t i, size_t k) const { return corners_[i * lines_.size() + k]; }
    double positionOn(size_t line, size_t other) const;

    std::vector<EdgeLine> lines_;
    std::vector<Corner> corners_;
    std::vector<Quad> best_;
    cv::Size size_;
};

} // namespace mirvak

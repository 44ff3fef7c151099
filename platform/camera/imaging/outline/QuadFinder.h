#pragma once

#include "LineFinder.h"
#include "Outline.h"

#include <opencv2/core.hpp>

#include <array>
#include <deque>
#include <vector>

namespace mirvak {

class SheetMap;

/// Puts straight edges together to the quadrilateral that is most likely the outline of a page. Coordinates
/// are those of the small picture. Keeps its buffers; one thread at a time.
class QuadFinder
{
public:
    enum class Search {
        page,   ///< the one page: a side that runs on beyond its corner speaks against it
        sheets, ///< several: the sides of a neighbour may begin a little further on in the same line
    };
    /// The most likely outlines, best first. `size`: of the small picture; `map`: of it, when there is one,
    /// says which of many are worth keeping.
    const std::vector<Outline>& find(const std::vector<EdgeLine>& lines,
                                     const cv::Size& size,
                                     Search search = Search::page,
                                     const SheetMap* map = nullptr);

    struct Side
    {
        const EdgeLine* line = nullptr;
        double from = 0, to = 0; ///< positions of the two corners on the line
    };
    /// What the edges say of an outline; means and extremes over the sides that can be seen, 0 to 1.
    struct Edges
    {
        double covered = 0, leastCovered = 1; ///< share of a side that follows an edge
        double corners = 0, leastCorner = 1;  ///< the same of both ends that meet at a corner
        double overrun = 0, mostOverrun = 0;  ///< of what lies beyond a side's ends
        double clear = 0, leastClear = 1;     ///< share of a side along which its two sides differ
        double steady = 0, leastSteady = 1;   ///< 1 when they differ in the same way all along
        double rise = 0, leastRise = 1e9;     ///< how much brighter it is inside, levels
        double brighter = 0;                  ///< share of the sides that are brighter inside
        int seen = 0;                         ///< sides that do not lie on the border of the picture
    };
    struct Quad
    {
        std::array<cv::Point2d, 4> corners; ///< clockwise
        std::array<Side, 4> sides;          ///< side i runs from corner i to corner i + 1
        double area = 0;                    ///< share of the picture
        Edges edges;
        double score = 0;      ///< prefers the larger of two good outlines
        double confidence = 0; ///< 0 to 1
        bool darker = false;   ///< than what lies around it, on every side that can be seen
    };
    /// Puts an outline that something else than long edges has found beside those that the last find()
    /// answered, however faint its sides are. `corners`: clockwise, near the edges.
    void
    add(const std::array<cv::Point2d, 4>& corners, const EdgeField& field, const EdgeLine::Planes& planes);
    /// What the last find() answered and what was added, with all that is known of it. The sides point into
    /// the `lines` of find().
    const std::vector<Quad>& quads() const { return best_; }

private:
    struct Crossing ///< of one line with another
    {
        float t = 0, covered = 0; ///< position on the first line, and pixels with an edge before it
        bool possible = false;
    };
    const EdgeLine* tracedSide(const cv::Point2d& from,
                               const cv::Point2d& to,
                               const EdgeField& field,
                               const EdgeLine::Planes& planes);
    void collectLines(const std::vector<EdgeLine>& lines);
    void findCrossings();
    void tryQuads();
    void tryRungs(size_t a, size_t c);
    Crossing crossingOn(size_t i, const cv::Point2d& point) const;
    bool isFollowed(size_t line, size_t from, size_t to) const;
    bool canBeKept(const std::array<size_t, 4>& order, double area) const;
    void keep(const Quad& quad);
    bool dropsRivals(const Quad& quad);
    void tryQuad(size_t a, size_t b, size_t c, size_t d);
    const EdgeLine& line(size_t i) const { return *lines_[i]; }
    const Crossing& crossing(size_t i, size_t k) const { return crossings_[i * lines_.size() + k]; }
    bool startsAt(size_t line, double t) const;
    double coverageOf(size_t line, size_t from, size_t to) const;

    std::vector<EdgeLine> borders_;
    std::deque<EdgeLine> added_; ///< stay where they are: sides point at them
    std::vector<const EdgeLine*> lines_;
    std::vector<Crossing> crossings_;
    std::vector<size_t> rungs_; ///< lines that could be a side between two others
    std::vector<Quad> best_;
    std::vector<Outline> outlines_;
    cv::Size size_;
    const SheetMap* map_ = nullptr; ///< during find()
    Search search_ = Search::page;
    int tries_ = 0;
};

/// Moves each side by up to `reach` pixels at its ends to where the colours change most along all of it: the
/// edge of the paper itself rather than the rim of its shadow.
std::array<cv::Point2d, 4>
snapSides(const EdgeField& field, const std::array<cv::Point2d, 4>& corners, int reach = 4);
/// The same of one side alone: the two next to it stay in their lines.
std::array<cv::Point2d, 4>
snapSide(const EdgeField& field, const std::array<cv::Point2d, 4>& corners, size_t side, int reach = 4);

} // namespace mirvak

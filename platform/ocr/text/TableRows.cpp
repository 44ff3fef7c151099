#include "TableRows.h"

#include <cstdlib>

namespace mirvak {

namespace {

struct Edge
{
    int agreeing = 0; // cells of the rows with this edge
    double mean = 0;  // px
};

using Rows = std::vector<std::vector<std::vector<ReadWord>>>;

Edge edgeOf(const Rows& rows, int at, bool right, double tolerance)
{
    Edge edge;
    for (const auto& row : rows) {
        for (size_t i = 1; i < row.size(); ++i) {
            const int other = right ? row[i].back().box.right : row[i].front().box.left;
            if (std::abs(other - at) <= tolerance) {
                ++edge.agreeing;
                edge.mean += other;
            }
        }
    }
    if (edge.agreeing > 0)
        edge.mean /= edge.agreeing;
    return edge;
}

} // namespace

std::vector<std::vector<TabStop>>
tabStops(const Rows& rows, const Area& area, double em, const PageScale& scale)
{
    const double tolerance = em / 2;
    std::vector<std::vector<TabStop>> all;
    for (const auto& row : rows) {
        std::vector<TabStop> stops;
        for (size_t i = 1; i < row.size(); ++i) {
            const Edge begin = edgeOf(rows, row[i].front().box.left, false, tolerance);
            const Edge end = edgeOf(rows, row[i].back().box.right, true, tolerance);
            const bool atEnd = i + 1 == row.size() && area.right - row[i].back().box.right <= 2 * tolerance;
            const bool right = end.agreeing > begin.agreeing || (atEnd && end.agreeing == begin.agreeing);
            stops.push_back({scale.twips((right ? end.mean : begin.mean) - area.left), right});
        }
        all.push_back(std::move(stops));
    }
    return all;
}

} // namespace mirvak

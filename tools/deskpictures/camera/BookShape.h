#pragma once

#include <vector>

namespace deskpictures {

/// How the leaves of one half of an open book are bent, in millimetres above the desk.
struct Bend
{
    double crestMm = 15;   ///< how high the leaves bulge
    double crestAtMm = 30; ///< and how far from the spine
    double blockMm = 3;    ///< thickness of the leaves below, at the outer edge
    double curlMm = 0;     ///< how far the outer edge lifts off
    double curlFromMm = 0; ///< at which distance from the spine that begins
};

/// The cross section of one half of an open book: how high the paper stands at a distance from the spine, and
/// how much paper lies between. All in millimetres. Immutable after construction, thread-safe.
class BookShape
{
public:
    explicit BookShape(double pageWidthMm, const Bend& bend = {});

    /// Where the page ends on the desk: less than its width, because it is bent.
    double halfWidth() const { return m_halfWidth; }
    double height(double fromSpine) const;
    /// Rise for each millimetre away from the spine.
    double slope(double fromSpine) const;
    /// Length of the paper from the spine; linear beyond both ends, so that edges can be smoothed there.
    double alongPage(double fromSpine) const;
    /// The inverse of alongPage for points of the page.
    double fromSpine(double alongPage) const;

private:
    std::vector<double> m_height;
    std::vector<double> m_along;
    double m_halfWidth;
};

} // namespace deskpictures

#pragma once

#include <vector>

namespace deskpictures {

/// The cross section of one half of an open book: how high the paper stands at a distance from the spine, and
/// how much paper lies between. All in millimetres. Immutable after construction, thread-safe.
class BookShape
{
public:
    explicit BookShape(double pageWidthMm);

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

#pragma once

#include "camera/BookShape.h"
#include "camera/Layer.h"
#include "camera/View.h"

#include <QImage>

#include <vector>

namespace deskpictures {

/// What an open book is made of, in millimetres.
struct BookForm
{
    cv::Size2d pageMm{148, 210};
    Bend left;
    Bend right;
    double leavesLeftMm = 3;  ///< the edges of the leaves below, seen beyond the page
    double leavesRightMm = 3; ///< likewise
    double coverMm = 3;       ///< the cover beyond the leaves; 0: as large as they are
    cv::Vec3b coverColour{72, 36, 40};
};

/// The light of one lamp on the book's bent paper.
struct BookLight
{
    double lampAcross = -0.7; ///< where the lamp stands, across the spine: -1 low at the left, 1 at the right
    double ambient = 0.45;    ///< part of the light that comes from everywhere
};

/// An open book whose pages are general cylinders along the spine. Immutable, thread-safe.
///
/// Pages are seen as a pinhole camera sees them: a ray of a pixel hits the highest paper on its way, so that
/// a crest hides what lies behind it. Light is computed for the cross section: paper gets what comes from
/// the sky between the two pages (a valley gets little), and the lamp's share by its own slope unless the
/// other page stands in the way.
class OpenBook
{
public:
    OpenBook(const BookForm& form, BookLight light);

    cv::Size2d pageMm() const { return m_form.pageMm; }
    /// The book as it covers the desk.
    cv::Size2d openMm() const { return {m_left.halfWidth() + m_right.halfWidth(), m_form.pageMm.height}; }
    /// @param left, right  the pages' pictures, RGBA premultiplied, of any density
    Layer see(const View& view, const QImage& left, const QImage& right) const;
    /// Where the camera has a point of a flat page (mm from its top left corner): pixels, the centre of the
    /// top left pixel is (0, 0).
    cv::Point2d toPicture(const View& view, bool isRight, cv::Point2d pageMm) const;

private:
    double height(double across) const;
    std::vector<float> lightTable() const;
    std::vector<float> hitTable(double eyeAcross, double eyeHeight) const;
    cv::Vec4b rim(cv::Point2d hit, cv::Point2d plane, double pxPerMm) const;

    BookForm m_form;
    BookLight m_light;
    BookShape m_left;
    BookShape m_right;
};

} // namespace deskpictures

#pragma once

#include "BookShape.h"
#include "Layer.h"
#include "View.h"

#include <QImage>

#include <array>
#include <vector>

namespace deskpictures {

/// An open book: two pages that rise from the sewing in the middle, bend over and run out nearly flat.
/// The surface is a cylinder: its height depends on the distance from the spine only. Immutable, thread-safe.
class Book
{
public:
    /// @param pageMm  one page as it lies flat
    Book(QImage left, QImage right, cv::Size2d pageMm);

    /// The open book as it covers the desk, from one page's outer edge to the other's.
    cv::Size2d openMm() const { return {2 * m_shape.halfWidth(), m_pageMm.height}; }
    Layer see(const View& view) const;

    /// A point of the flat page and where the camera sees it.
    struct GridPoint
    {
        bool right;         ///< which page
        cv::Point2d pageMm; ///< from the page's top left corner
        cv::Point2d picturePx;
    };
    std::vector<GridPoint> grid(const View& view, double stepMm) const;
    /// The outer corners of the two pages in the picture, in the order of View::corners.
    std::array<cv::Point2d, 4> corners(const View& view) const;

private:
    cv::Point2d see(const View& view, bool right, cv::Point2d pageMm) const;

    QImage m_left;
    QImage m_right;
    cv::Size2d m_pageMm;
    BookShape m_shape;
};

} // namespace deskpictures

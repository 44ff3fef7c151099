#pragma once

#include "View.h"

#include <QImage>

#include <opencv2/core.hpp>

namespace deskpictures {

/// What lies on a desk, as the camera sees it.
struct Layer
{
    cv::Mat colours; ///< CV_8UC4, sRGB, premultiplied, the picture's size
    cv::Mat light;   ///< CV_32F brightness by the thing's own shape; empty: flat
};

/// A flat page, prepared once for a view and warped as often as wanted.
class FlatLayer
{
public:
    /// @param page  RGBA, premultiplied  @param pxPerMm  of the view that it is made for
    FlatLayer(const QImage& page, cv::Size2d pageMm, double pxPerMm);

    /// @param pageToPicture  from the page's plane (mm, origin in its middle) to the picture
    /// @return CV_8UC4, premultiplied
    cv::Mat warp(const cv::Matx33d& pageToPicture, cv::Size picturePx) const;

private:
    cv::Matx33d m_textureToPage; // filled while the texture is made
    cv::Mat m_texture;
};

/// A page reduced to a density, with a transparent rim, so that its edges come out smooth. @param[out]
/// textureToPage from the texture's pixels to millimetres from the page's middle
cv::Mat pageTexture(const QImage& page, cv::Size2d pageMm, double pxPerMm, cv::Matx33d& textureToPage);

/// The part of a desk top under a view, 8-bit RGB.
cv::Mat seeDesk(const cv::Mat& top, const View& view);

/// Lays a premultiplied picture over an opaque one of the same size. @param alpha receives the coverage,
/// CV_8U
void layOver(cv::Mat& ground, const cv::Mat& colours, cv::Mat& alpha);

} // namespace deskpictures

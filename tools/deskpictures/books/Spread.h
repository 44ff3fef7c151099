#pragma once

#include "BookPage.h"
#include "OpenBook.h"

#include <opencv2/core.hpp>

#include <memory>
#include <optional>
#include <string>

namespace deskpictures {

/// A page of a photograph and its truth.
struct SpreadPage
{
    BookPage page;
    /// Paper that a finger hides: CV_8U, 255, of the flat page, maskPxPerMm to a millimetre.
    cv::Mat fingers;
};
constexpr int maskPxPerMm = 2;

/// A photograph of an open book, or of one flat sheet, of which everything is known.
struct Spread
{
    std::string name; ///< contents of its pages
    std::string bend; ///< how its pages are bent
    cv::Mat photo;    ///< CV_8UC3, RGB, after JPEG coding
    cv::Size2d pageMm;
    SpreadPage left;
    std::optional<SpreadPage> right; ///< none: one flat sheet
    std::shared_ptr<const View> view;
    std::shared_ptr<const OpenBook> book; ///< none: one flat sheet

    /// Where the photograph has a point of a flat page (mm from its top left corner).
    cv::Point2d toPhoto(bool isRight, cv::Point2d pointMm) const;
};

/// The same seed makes the same book, contents, bend, light, desk, camera and hands. About two seconds.
Spread makeSpread(uint64_t seed, cv::Size photoPx);
/// A flat sheet on a desk.
Spread makeFlatSheet(uint64_t seed, cv::Size photoPx);

} // namespace deskpictures

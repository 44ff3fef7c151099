#pragma once

#include "Outline.h"
#include "PageAspect.h"
#include "PaperFormat.h"

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// Size in pixels of the straightened page that loses no detail: no side shorter than it was seen.
cv::Size2d pageSize(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture);

/// A straightened page.
struct PageShape
{
    cv::Size2d size;                     ///< px, as pageSize, of exactly the format's proportions
    const PaperFormat* format = nullptr; ///< null when it is of no usual size

    double dpi() const; ///< with which it has its real size; only with a format
};

PageShape pageShape(const std::array<cv::Point2d, 4>& corners, const cv::Size& picture);

/// Those of sheets that lie on one desk. All are seen at one scale, so what would need another one than the
/// largest sheet of a usual size only looks like a format, and has none.
std::vector<PageShape> pageShapes(const std::vector<Outline>& sheets, const cv::Size& picture);

} // namespace mirvak

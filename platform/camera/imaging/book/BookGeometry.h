#pragma once

#include "BookFit.h"
#include "BookLook.h"
#include "Letters.h"
#include "PageBorder.h"
#include "PageRemap.h"
#include "Spine.h"
#include "TextTracks.h"

#include <array>
#include <optional>
#include <vector>

namespace mirvak {

/// What a picture of an open book, or of one page, tells of its geometry. Without a spine all is one page,
/// the right one. Reentrant.
class BookGeometry
{
public:
    /// Finds the spine, the print and the ends of the paper, and fits a bent sheet to them.
    /// @param rgb  CV_8UC3
    explicit BookGeometry(const cv::Mat& rgb);

    bool isSpread() const { return spine_.has_value(); }
    /// Whether there is paper on that side.
    bool hasPage(bool isRight) const;
    /// Whether that page is a picture to all its ends.
    bool isPicture(bool isRight) const { return borders_[isRight].isPicture; }
    /// Whether there are some lines of print, wherever the paper ends.
    bool hasPrint() const;
    /// Whether the lines of print lie where the model has them.
    bool holds() const;
    /// Whether the lines of one page are as straight as the camera shows those of a flat sheet.
    bool isFlat() const;
    /// Where that page lies, flat.
    cv::Rect2d area(bool isRight) const;
    /// A part of the flat paper at full resolution.
    /// @param rgb  what the geometry was made of
    cv::Mat picture(const cv::Mat& rgb, const cv::Rect2d& area) const;
    const CylinderModel& model() const { return model_; }
    const BookLook& look() const { return look_; }
    const Remainders& remainders() const { return remainders_; }

private:
    void begin();
    void fit();
    bool isCrossed() const;
    std::vector<Track> text() const;
    cv::Rect2d textArea(bool isRight) const;
    PageBorder border(bool isRight, int reach) const;
    void lookForBorders(int reach);
    void lookForPicture(bool isRight, bool isKnown, int reach);
    void matchSizes();
    size_t firstPage() const { return spine_ ? 0 : 1; }
    double noise() const;

    BookLook look_;
    Letters letters_;
    std::optional<Spine> spine_;
    CylinderModel model_;
    std::vector<Chain> chains_;
    std::array<PageBorder, 2> borders_;
    Remainders remainders_;
    double error_ = 0;
};

} // namespace mirvak

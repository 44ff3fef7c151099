#pragma once

#include "FlatView.h"
#include "PaperEnd.h"

#include <vector>

namespace mirvak {

/// Looks for the three open ends of a page. All pixels are those of the view with the spine at its left.
class BorderSearch
{
public:
    /// @param text  what is certainly page
    /// @param hasSpine  false: the only page, whose left side is no margin at a spine
    BorderSearch(const FlatView& view, bool isRight, const cv::Rect& text, bool hasSpine);

    /// Goes outward from the print for the ends of the paper, and of pictures that go to the page's end.
    void run();
    /// The same for a picture to all ends of a page; false when it has not most of the sides of that page.
    bool runPicture(const cv::Rect& page);

    const PaperEnd::Found& top() const { return top_; }
    const PaperEnd::Found& bottom() const { return bottom_; }
    const PaperEnd::Found& outer() const { return outer_; }
    cv::Rect found() const; ///< what lies between them and the spine

    const PaperEnd& rows() const { return rows_; }
    const PaperEnd& columns() const { return columns_; } ///< its points have x down and y across the view
    double paperIn(const cv::Rect& area) const;          ///< share, 0 to 1
    bool isBright() const;                               ///< paper, not the night

private:
    BorderSearch(const cv::Mat& seen, PaperLook look, const cv::Rect& text);

    PaperEnd::Span across() const;
    PaperEnd::Span down() const;
    void lookFromPrint();
    void followSides();

    cv::Rect text_;
    PaperLook look_;
    PaperEnd rows_, columns_;
    PaperEnd::Found top_{}, bottom_{}, outer_{};
};

} // namespace mirvak

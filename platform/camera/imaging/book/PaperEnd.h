#pragma once

#include "PaperLook.h"

#include <algorithm>
#include <vector>

namespace mirvak {

/// Looks down or up the rows of a page for the row at which its paper ends. A side is looked for in the same
/// pictures with rows and columns exchanged.
class PaperEnd
{
public:
    /// A part of a row, pixels: from the first column to before the last.
    struct Span
    {
        int from, to;
    };
    struct Found
    {
        int row;
        bool wasSeen; ///< false: the picture ends before the paper does
    };

    /// All three have one size. @param seen  CV_8UC1, 255 where the camera saw something
    PaperEnd(cv::Mat seen, cv::Mat paper, cv::Mat level);

    /// @param step  1 downwards, -1 upwards from the row `start`, which is page
    /// @param stop  the answer when the picture ends before the paper
    Found find(const Span& span, int start, int step, int stop) const;

    /// Whether a side of the page lies near that row, all along the span. @param outward  1 or -1: where no
    /// page is
    bool hasSide(int row, int outward, const Span& span) const;
    /// How far such a side runs on from a column. @param step  1 to the right, -1 to the left
    /// @return the last column of the side, `from` when it ends there
    int runsOn(int row, int outward, int from, int step) const;
    /// The row near that one with the strongest edge across.
    int strongest(const Span& span, int row) const;

    /// The edge near that row, column by column, to a part of a pixel.
    /// @param reach  rows by which it may be off
    std::vector<cv::Point2d> edge(const Span& span, int row, int reach) const;

    int columns() const { return level_.cols; }
    int rows() const { return level_.rows; }

private:
    bool isLine(const Span& span, int row) const;
    bool changesLevel(const Span& span, int row, int step, int lasting) const;
    double levelFrom(const Span& span, int row, int step, int lasting) const;
    double paperFrom(const Span& span, int row, int step, int lasting) const;
    int resumes(const Span& span, int row, int step, int lasting) const;
    bool hasPart(int row, int outward, const Span& part) const;
    int part() const { return std::max(6, columns() / 60); }
    double meanStep(const Span& span, int row) const;
    int clamped(int row) const;

    cv::Mat seen_, paper_, level_, steps_;
};

} // namespace mirvak

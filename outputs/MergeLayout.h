#pragma once

#include <QRect>
#include <QSize>

/// Where two pictures lie in the one that joins them, in px of that one. The arithmetic is in single
/// precision, every length cut down to whole pixels.
struct MergeLayout
{
    QSize size; ///< empty: there is nothing to join
    QRect first;
    QRect second;

    /// Side by side, both as high as the second picture. `gap` px lie between them; negative counts as 0.
    static MergeLayout leftRight(const QSize& first, const QSize& second, int gap);
    /// One above the other, both as wide as the mean of the two.
    static MergeLayout upDown(const QSize& first, const QSize& second, int gap);

    /// False also for a result with a side of more than 32767 px, beyond which nothing can be painted: a
    /// sliver beside a whole page would be scaled to that.
    bool isEmpty() const { return size.isEmpty(); }
};

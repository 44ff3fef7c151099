#pragma once

#include "PageMark.h"

#include <mutex>

class QPainter;
class QRect;
class QSize;
class QWidget;
class ShotHint;

/// What is known of the page in the frame that a view shows: a line over its outline tells whether a capture
/// will be good, and a hint says what is wrong. GUI thread only, except set().
class ShownMark
{
public:
    /// Makes the hint, which belongs to `view`. @param below  px that the hint leaves free at the lower edge
    ShownMark(QWidget& view, int below);

    /// Belongs to the frame that comes next; holds until the next call. Thread-safe.
    /// @return whether the view must take() it even when no frame follows: other words would stand
    bool set(const PageMark& mark);
    /// What was set last belongs to the shown picture from now on; to one that is not live belongs none.
    void take(bool isLive);
    /// Forgets what was set, too.
    void clear();

    /// @param displayed  where the whole frame lies, in the painter's coordinates
    /// @param frame      px
    void paint(QPainter& painter, const QRect& displayed, const QSize& frame) const;

private:
    ShotHint* hint_;
    std::mutex mutex_;
    PageMark newest_; // guarded by mutex_
    PageMark mark_;   // of the shown frame
};

#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// Where a picture lies in a view: fitted, zoomed and panned. All in pixels; view coordinates start at the
/// top left corner of the view, source coordinates at that of the picture. A value without a widget behind
/// it.
class ViewGeometry
{
public:
    void setViewSize(const QSize& size);
    void setSourceSize(const QSize& size); ///< empty: no picture
    /// Whether the fitted picture covers the view (true) or lies wholly inside it (false, at first).
    void setExpanding(bool expanding);

    /// One step of 0.1 in or out, within 0.1 to 2.0. A new displayed size puts the picture back to the
    /// centre.
    void zoomBy(int steps);
    void fit(); ///< zoom 1.0, centred
    double zoom() const { return zoomTenths_ / 10.0; }

    /// Moves the picture; on each axis at least a quarter of what the view could show of it stays visible.
    void panBy(const QPoint& delta);
    QPoint pan() const { return pan_; }

    /// The whole picture as shown, in view coordinates; it may reach beyond the view. Null without a picture.
    QRect displayed() const { return displayed_; }
    /// The part of displayed() that lies in the view.
    QRect visible() const;
    /// @return `rectangle` (view coordinates) in source pixels, rounded and clipped; null outside the
    /// picture.
    QRect toSource(const QRect& rectangle) const;

private:
    void place();

    QSize view_;
    QSize source_;
    bool expanding_ = false;
    int zoomTenths_ = 10; // whole tenths: no drift over many steps
    QPoint pan_;
    QRect displayed_;
};

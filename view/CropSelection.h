#pragma once

#include <QRect>

#include <mutex>

class ViewGeometry;

/// The rectangle that the user drew over the picture. It stays on what it was drawn around when the view gets
/// another size. GUI thread only, except source(), which is thread-safe.
class CropSelection
{
public:
    /// `rectangle`: view coordinates; null removes it.
    void set(const QRect& rectangle, const ViewGeometry& geometry);
    /// Where it lies in the view now; null when there is none.
    QRect inView(const ViewGeometry& geometry) const;
    /// Works out source() anew; to be called when the geometry has changed.
    void publish(const ViewGeometry& geometry);
    /// In pixels of the frame, clipped to it; null when there is none or no picture.
    QRect source() const;

private:
    QRect drawn_;     // view coordinates, as it was drawn
    QRect displayed_; // where the picture lay when it was drawn
    mutable std::mutex mutex_;
    QRect source_; // guarded by mutex_
};

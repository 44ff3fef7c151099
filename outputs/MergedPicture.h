#pragma once

#include <QImage>

struct MergeLayout;

/// The joined picture itself. Reentrant.
namespace mergedPicture {

/// Both pictures in full size in their places, on white. 32 bits a pixel; null for an empty layout or without
/// the memory.
QImage compose(const MergeLayout& layout, const QImage& first, const QImage& second);

/// `picture` reduced to what a screen can show of it, for painting it again and again; a small one as it is.
QImage forDisplay(const QImage& picture);

/// Writes a JPEG of 8464 dots per metre, whatever the path's ending, under a temporary name beside `path` and
/// renames it then. @return false when nothing was written (one line on standard error)
bool save(QImage picture, const QString& path);

} // namespace mergedPicture

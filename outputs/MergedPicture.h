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

} // namespace mergedPicture

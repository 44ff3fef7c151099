#pragma once

#include <QImage>

/// What the toolkit's PDF writer does to pictures. Reentrant.
namespace pictureCoding {

/// Whether the writer's own JPEG coding would keep this picture so well that nobody sees the difference: a
/// peak signal-to-noise ratio of at least 43 dB, measured on blocks spread over the picture. Pictures that
/// came from a camera's JPEG pass, drawn ones and very noisy ones often do not.
bool survivesJpeg(const QImage& picture);

} // namespace pictureCoding

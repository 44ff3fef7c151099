#pragma once

#include "Image.h"

#include <memory>

namespace mirvak {

// Copies of an image share its pixels until one of them is written, so that handing a frame from the camera's
// thread to a capture costs no copy of its 24 megabytes. A picture that is shared is only ever read; whoever
// writes makes it its own first. Different images may be used on different threads, one image on one at a
// time.

/// Whether another image holds these pixels too.
bool isShared(const cv::Mat& pixels);
/// A copy that shares the pixels.
Image share(const Image& image);
/// The bytes of the pixels, for readers that know no matrices; they stay as they are for as long as it lives.
/// May be let go of on any thread.
std::shared_ptr<const unsigned char> lend(const Image& image);
/// Call it before writing into image.pixels: copies them when they are shared.
void makeOwn(Image& image);
/// Call it after an operation that wrote into image.spare and swapped: what was shared is no spare buffer.
void dropSharedSpare(Image& image);

} // namespace mirvak

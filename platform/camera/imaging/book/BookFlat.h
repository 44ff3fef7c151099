#pragma once

#include "Image.h"

#include <optional>

namespace mirvak {

struct BookPages
{
    Image left;                 ///< the page, the left page, or both side by side
    std::optional<Image> right; ///< the right page of a spread that was parted
};

/// Flattens a photographed open book or single page: every line of print becomes straight, what the paper's
/// bend squeezes gets its breadth back, the light even. Where the print and the paper's edges tell no bend
/// that fits them, the page is merely straightened. Reentrant; `image` is only read.
/// @param takeFingers  fill fingers that come in over the paper's ends with paper
/// @param parted  a spread becomes two pictures
/// @return nothing when there is no paper in the picture
std::optional<BookPages> flattenBook(const Image& image, bool takeFingers, bool parted);

} // namespace mirvak

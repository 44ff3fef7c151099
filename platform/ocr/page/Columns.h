#pragma once

#include "Marks.h"

namespace mirvak {

/// Divides a page into blocks of text in reading order: columns of running text from left to right, what
/// stands over or under them before or after. Tables, forms and letter heads are not torn apart, because
/// their rows are read across. Recursive cuts through white space (Nagy and Seth, Hierarchical representation
/// of optically scanned documents, 1984), a cut between columns only where both sides hold prose.
std::vector<cv::Rect> blocksOf(const Marks& marks);

} // namespace mirvak

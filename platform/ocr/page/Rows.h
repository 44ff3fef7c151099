#pragma once

#include "Marks.h"

namespace mirvak {

/// The rows of text that marks stand in, from the top down: the box around each. Marks side by side count as
/// one row whatever lies between them.
std::vector<cv::Rect> rowsOf(const std::vector<cv::Rect>& marks, int markHeight);

/// The rows that show best what a page says: long ones of the usual height, from different places of it.
/// Each is cut between two words to at most `longest` px.
std::vector<cv::Rect> sampleRows(const Marks& marks, int wanted, int longest);

} // namespace mirvak

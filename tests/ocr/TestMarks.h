#pragma once

#include "Marks.h"

/// Pages of made marks, as large as letters of 16 px.
namespace testMarks {

constexpr int height = 16, step = 12, rowPitch = 40;

/// Rows of letter-sized boxes in words of five, as wide as `letters` allows.
void addText(mirvak::Marks& marks, int left, int top, int rows, int letters);
mirvak::Marks turned(const mirvak::Marks& marks);
cv::Mat drawn(const mirvak::Marks& marks, const cv::Size& size);
size_t inkIn(const cv::Mat& page, const cv::Rect& part);

} // namespace testMarks

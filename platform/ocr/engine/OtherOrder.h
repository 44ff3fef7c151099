#pragma once

#include "TextModel.h"

namespace mirvak {

/// A page that was read badly may have been divided badly: the recogniser divides it once more by itself, and
/// what then reads clearly better takes the place. Costs a second reading, on such pages only.
void tryOtherOrder(ReadPage& page, const cv::Mat& grey, TextModel& model, const Limit& limit);

} // namespace mirvak

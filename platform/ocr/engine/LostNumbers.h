#pragma once

#include "Models.h"
#include "ReadPage.h"

namespace mirvak {

/// Whether a word is no sign, although no letter or digit was read in it: it is as high as its line's letters
/// and has room for two of them, as the number 11 that some models take for a stroke.
bool isLostNumber(const ReadWord& word, const ReadLine& line);

/// Has numbers read by the other models that the page's own took for signs: digits are the same in all
/// scripts. @param grey cleaned of specks
void findLostNumbers(
    ReadPage& page, const cv::Mat& grey, const TextModel& own, Models& models, const Limit& limit);

} // namespace mirvak

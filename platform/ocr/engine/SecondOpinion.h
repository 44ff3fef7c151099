#pragma once

#include "LineJoin.h"
#include "Models.h"
#include "Watch.h"

namespace mirvak {

/// Whether words of one language would become something that is less of another one: worn print looks like
/// letters of another script, but hardly ever like words of its language.
bool losesWords(const std::vector<ReadWord>& old,
                const IsWord& isWord,
                const std::vector<ReadWord>& other,
                const IsWord& isOthersWord);

/// Words of another language on a page: what the page's own model reads with little confidence, and Latin
/// words on a page of Chinese, is read again by the other models. The most confident reading stays. A page
/// with much of that kind gets a third of its work again and no more; what is left then, or at the limit,
/// stays as it is.
void askOthers(ReadPage& page,
               const cv::Mat& grey,
               TextModel& own,
               Models& models,
               const Limit& limit,
               const Stretch& stretch);

} // namespace mirvak

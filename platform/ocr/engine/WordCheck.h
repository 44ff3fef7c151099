#pragma once

#include "LineJoin.h"
#include "TextModel.h"

namespace mirvak {

/// Whether a word read by itself is to take the place of what was read in its line. It has to be sure, and to
/// differ in a way in which lines are misread: by a letter that makes no word of it, or by a mark beside it
/// that is dust. What cannot be told without the line stays: capitals, a comma or a full stop, a dot over a
/// letter.
bool isPutRight(const ReadWord& inLine, const ReadWord& alone, const IsWord& isWord);

/// Reads the words that the recogniser was least sure of once more, each by itself, and puts some of them
/// right; words of the dictionary that are read alike are as sure as by themselves. At most a small share of
/// what the page holds. @param grey cleaned of specks
void checkWords(ReadPage& page, const cv::Mat& grey, TextModel& model, const Limit& limit);

} // namespace mirvak

#pragma once

#include "Answers.h"

namespace mirvak::helper {

/// Two-dimensional codes, and single one-dimensional ones, by ZXing-C++. May abort the process: release 1.4
/// has its assertions compiled in, and ordinary pictures break them.
/// `evenly`: one threshold for the whole picture instead of one for each part.
void readMatrices(const Picture& picture, bool evenly, const Answers& answers);
/// One one-dimensional code that fills the picture. Without DataBar and without reduced copies, the two that
/// make the assertions fail most.
void readOneBar(const Picture& picture, const Answers& answers);

} // namespace mirvak::helper

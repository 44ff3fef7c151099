#pragma once

#include "Columns.h"
#include "ReadPage.h"

namespace mirvak {

/// Puts areas together that stand beside each other although the recogniser read most of their lines on, with
/// no more white between them than between the words of those lines: a few spaces that happened to stand
/// below each other are no gutter. The whole takes the place of the first. @param lines of the whole page
void joinTornAreas(std::vector<TextArea>& areas, const ReadBlock& lines);

} // namespace mirvak

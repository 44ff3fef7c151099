#pragma once

#include "MadePages.h"

#include <optional>

/// Pages of plain drawing on six kinds of desk: the other half of what is learnt from. Among them pages that
/// run out of the picture, open books, pages that fill it, bare desks and pens.
struct PlainScene
{
    cv::Mat picture;                    ///< 8-bit RGB
    std::optional<made::Corners> sheet; ///< what is in the picture of it; nothing where none is to be found
};

constexpr int plainDesks = 6;
PlainScene makePlainScene(made::Desk desk, cv::Size picture, unsigned seed);
/// An open book. Where its pages' edges sink towards the fold, no outline is right.
PlainScene makeBookScene(made::Desk desk, cv::Size picture, unsigned seed);

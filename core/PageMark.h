#pragma once

#include "mirvakcamera.h"

#include <QPolygonF>

/// What is known of the page in one frame of the preview.
struct PageMark
{
    MirvakShot shot = MIRVAK_SHOT_NO_PAGE;
    QPolygonF corners; ///< in pixels of the frame, clockwise; empty where the frame shows none

    bool isGood() const { return shot == MIRVAK_SHOT_GOOD; }
    bool isFlawed() const { return shot >= MIRVAK_SHOT_LEAVES_PICTURE; }
};

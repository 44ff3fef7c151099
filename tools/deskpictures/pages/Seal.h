#pragma once

#include "Sheet.h"

namespace deskpictures {

/// A round rubber stamp.
struct Seal
{
    double radiusMm;
    QColor ink;
    QString ring;   ///< along the upper arc
    QString centre; ///< below the star; empty: in its place
    Typeface face;
    double ringPoints;
    double sweepDegrees; ///< how much of the circle the ring's words take
    bool star;
};

/// Two that are pressed on the pages of the desk: one with a star, one with two rings.
Seal starSeal(const QColor& ink);
Seal ringSeal(const QColor& ink);

/// Presses it on a sheet, turned clockwise. Ink lies over the print and darkens it.
void press(Sheet& sheet, const Seal& seal, double xMm, double yMm, double degrees);

} // namespace deskpictures

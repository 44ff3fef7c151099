#pragma once

#include <QPainter>
#include <QRect>
#include <QString>

/// Draws a caption in white, centred, at the top of the box: in one line where it fits, else in two, else
/// smaller.
/// @param language  folder code; it decides the font, because the same character looks different in
///                  Beijing, Hong Kong and Tokyo
/// @param box       in device pixels, as is everything on this painter
/// Throws std::runtime_error when the font is not installed, lacks a character, or the text does not fit.
void drawCaption(
    QPainter& painter, const QString& caption, const QString& language, const QRect& box, int scale);

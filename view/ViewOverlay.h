#pragma once

#include <QRect>
#include <QString>

class QPainter;

/// What the preview draws besides the picture. All rectangles in view coordinates.
namespace overlay {

/// Red text in a band of 32 px around the middle of the view.
void drawInfo(QPainter& painter, const QRect& view, const QString& text);
/// The guide line for a book's spine: at the middle of the picture, over the whole height of the view.
void drawBookLine(QPainter& painter, const QRect& view, const QRect& picture);
void drawSelection(QPainter& painter, const QRect& rectangle);
/// A line for the user at the lower edge, on a dark ground that makes it readable over any picture.
void drawNotice(QPainter& painter, const QRect& view, const QString& text);
/// A small label in the lower left corner of the visible picture.
void drawLabel(QPainter& painter, const QRect& visible, const QString& text);

} // namespace overlay

#pragma once

#include <QRect>
#include <QSize>
#include <QString>

class QFontMetrics;
class QPainter;
class QPolygonF;

/// What the preview draws besides the picture. All rectangles in view coordinates.
namespace overlay {

/// Red text in a band of 32 px around the middle of the view.
void drawInfo(QPainter& painter, const QRect& view, const QString& text);
/// The guide line for a book's spine: at the middle of the picture, over the whole height of the view.
void drawBookLine(QPainter& painter, const QRect& view, const QRect& picture);
void drawSelection(QPainter& painter, const QRect& rectangle);
/// The outline of a page that will be good: a line, green. Or not: dashes, amber. Both on a dark ground at
/// least `covered` px wide, so that they stand out of any picture.
void drawPageOutline(QPainter& painter, const QPolygonF& corners, bool isGood, qreal covered);
/// A warning triangle.
void drawWarning(QPainter& painter, const QRect& box);
/// A line for the user at the lower edge, on a dark ground that makes it readable over any picture.
void drawNotice(QPainter& painter, const QRect& view, const QString& text);
/// What has to be known about the picture of a small view, over its lower edge.
void drawCaption(QPainter& painter, const QRect& view, const QString& text);
/// The same ground for what stands in a widget of its own, and the text in it, broken into lines.
void drawBox(QPainter& painter, const QRect& box, const QString& text = QString());
/// What that text needs, within `room`.
QSize boxSize(const QFontMetrics& metrics, const QSize& room, const QString& text);

} // namespace overlay

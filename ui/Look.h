#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

class QApplication;
class QPainter;
class QWidget;

/// The one look of all windows. GUI thread only.
namespace Look {

inline const QColor background(8, 115, 140);
inline const QColor panel(25, 90, 100);
inline const QColor strip(107, 176, 205);
inline const QColor text(255, 255, 255);
inline const QColor focus(255, 213, 79); ///< the ring around the control that has the keyboard
inline const QColor ticked(67, 160, 71);

/// Style, palette and the rules for what belongs to no window (menus, tool tips, scroll bars). Once, before
/// the first window.
void install(QApplication& application);

/// Gives the captioned buttons, choosers and fields inside `container` the common look. Hand it the body of a
/// window, not the window: the background of the window's own form would win over the controls' colours.
void dress(QWidget& container);
/// The same without the buttons, for strips whose buttons are icons.
void dressFields(QWidget& container);

/// `icon` with a clearly dimmed picture for the disabled state; the style's own hardly differs on white
/// icons.
/// @param size px as shown
QIcon dimmable(const QIcon& icon, const QSize& size);

/// Draws a plain widget's style-sheet background; for paintEvent().
void paintBackground(QWidget& widget);
/// Draws the ring of the keyboard focus just inside `frame`.
void paintFocusRing(QPainter& painter, const QRect& frame);

} // namespace Look

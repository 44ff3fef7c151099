#pragma once

class QSize;
class QWidget;

/// For a window that is larger than the screen has room for.
namespace ScrolledWindow {

/// Lets what lies in `window` scroll, but for its title bar and, where `room` is wide enough for it, its
/// foot: the frame of that name with the buttons that end it. The window may then have any size.
void make(QWidget& window, const QSize& room);

} // namespace ScrolledWindow

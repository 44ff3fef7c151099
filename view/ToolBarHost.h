#pragma once

#include <QEvent>
#include <QObject>
#include <QPoint>
#include <QTimer>

class QMouseEvent;
class QWidget;

/// Keeps a bar at the top centre of a view and shows it while the user is about to use it: while the mouse is
/// in the view, one of the bar's popups is open, or the Tab key has moved the focus to the view or into the
/// bar. GUI thread only.
class ToolBarHost : public QObject
{
    Q_OBJECT

public:
    /// `bar` is a child of `view`, with its controls already made; it starts hidden.
    ToolBarHost(QWidget* bar, QWidget* view);

    /// While the mouse draws on the view: the bar gets out of the way from press to release, and a drag that
    /// begins on it goes to the view; a click does what it always does.
    void setDrawing(bool drawing);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchView(QEvent* event);
    bool passDragOn(QObject* watched, QMouseEvent* event);
    void passOn(QEvent::Type type, const QPoint& global);
    void noteFocus(QEvent* event);
    void takeKeyboard();
    void onFocusChanged(QWidget* now);
    void place();
    void show();
    void hideIfUnused();
    void watchMouse();
    bool isOfBar(const QObject* object) const;
    bool isPopupOfBar(const QWidget* widget) const;

    QWidget* bar_;
    QWidget* view_;
    bool hasMouse_ = false;
    bool isUserTyping_ = false; // the last input was a key, not the mouse
    bool hasKeyboard_ = false;  // the focus came here by a key
    bool isDrawing_ = false;
    bool isPressed_ = false;  // the view, while the mouse draws on it
    bool isGripped_ = false;  // a control of the bar, which may become a drag
    bool passesDrag_ = false; // what the mouse does belongs to the view
    QPoint pressGlobal_;      // screen coordinates
    QTimer watch_;            // looks for the mouse after a popup: the view may get no leave event then
};

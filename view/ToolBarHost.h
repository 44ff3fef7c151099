#pragma once

#include <QObject>
#include <QTimer>

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

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchView(QEvent* event);
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
    QTimer watch_;              // looks for the mouse after a popup: the view may get no leave event then
};

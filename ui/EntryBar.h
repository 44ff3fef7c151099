#pragma once

#include <QWidget>

#include <array>

class IconButton;

/// What can be done with one entry of the strip after the capture, as a small bar over its upper edge. Its
/// buttons take no focus: the keys that their tool tips name do the same. GUI thread only.
class EntryBar : public QWidget
{
    Q_OBJECT

public:
    enum Action { rename, turnLeft, turnRight, crop, straighten, undo };

    explicit EntryBar(QWidget* parent);

    /// `isPicture`: with all buttons; other documents can only be renamed.
    void offer(bool isPicture, bool canUndo);

Q_SIGNALS:
    void chosen(EntryBar::Action action);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void addButton(Action action, const char* name, const char* picture, const QString& text);

    std::array<IconButton*, 6> buttons_;
};

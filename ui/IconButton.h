#pragma once

#include <QPushButton>

/// A button that is all picture and draws the ring of the keyboard focus over it. Actions added to it make a
/// menu that opens by the right mouse button, by the menu key and by holding the button down, which then is
/// no click.
class IconButton : public QPushButton
{
    Q_OBJECT

public:
    explicit IconButton(QWidget* parent = nullptr);

Q_SIGNALS:
    void menuWanted(); ///< it opens now: what its actions show may be brought up to date

protected:
    bool event(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showMenu(const QPoint& globalPos);
};

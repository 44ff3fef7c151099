#pragma once

#include <QObject>
#include <QVector>

/// Lets a frameless window be resized by its edges and corners while it is neither maximised nor full screen.
/// The window manager does the work where it can, with its own rules of snapping. GUI thread only.
class WindowEdges : public QObject
{
    Q_OBJECT

public:
    /// For as long as `window` lives, which owns this object. The edges lie over what is inside.
    explicit WindowEdges(QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Grip;
    void update();

    QWidget& window_;
    QVector<Grip*> grips_;
};

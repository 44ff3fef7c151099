#pragma once

#include <QObject>
#include <QRect>

#include <functional>

class QScreen;
class QWindow;

/// Looks after every window of the program, whoever makes it, from the moment before it is shown. It lies
/// above the main window, goes with it when that one is minimised, and fits into the free part of its screen:
/// what is larger scrolls. The toolkit's own dialogs get the frame of the others. Escape closes what has a
/// close button, and asks when work would be lost. GUI thread only.
class WindowCare : public QObject
{
    Q_OBJECT

public:
    /// For as long as `main` lives, which owns this object.
    explicit WindowCare(QWidget& main);

    /// Stands in for what a screen has free, in its coordinates.
    void setFreeArea(std::function<QRect(const QScreen&)> area) { freeArea_ = std::move(area); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool caresFor(const QWidget& window) const;
    void show(QWidget& window, QEvent* event);
    void tie(QWidget& window) const;
    QWidget& ownerOf(const QWidget& window) const;
    void fit(QWidget& window) const;
    void keepInside(QWidget& window) const;
    void takeAlong() const;
    void passKeysOn(const QWindow* focused) const;
    void closeByKey(QWidget& window) const;

    QWidget& main_;
    std::function<QRect(const QScreen&)> freeArea_;
    bool isShowing_ = false;
};

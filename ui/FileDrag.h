#pragma once

#include <QObject>
#include <QPoint>
#include <QStringList>

class QDropEvent;
class QMouseEvent;
class ThumbnailList;
class QWidget;

/// Files of a strip dragged to other programs, as copies, and files of other programs dropped on it. What
/// lies under the pressed mouse goes, with all that is selected along with it. GUI thread only.
class FileDrag : public QObject
{
    Q_OBJECT

public:
    /// Owned by `strip`, as `list` is. In a page list the mouse moves entries instead; it still takes files.
    FileDrag(ThumbnailList& list, QWidget& strip);

Q_SIGNALS:
    /// In the order of the other program; what is no local file by its address.
    void dropped(const QStringList& paths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void press(const QMouseEvent& event);
    bool move(const QMouseEvent& event);
    void start();
    bool take(QDropEvent& event);

    ThumbnailList& list_;
    QPoint pressedAt_;
    QString pressed_; ///< path; empty when no drag can begin
};

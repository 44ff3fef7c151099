#pragma once

#include <QObject>
#include <QTimer>

class QPainter;
class QRect;

/// A line for the user over the lower edge of a view, for a few seconds; the newest one wins. GUI thread
/// only.
class ViewNotice : public QObject
{
    Q_OBJECT

public:
    explicit ViewNotice(QObject* parent);

    void say(const QString& text); ///< an empty one takes the last one away
    const QString& text() const { return text_; }
    void paint(QPainter& painter, const QRect& view) const;

Q_SIGNALS:
    void changed(); ///< it has to be painted again

private:
    QString text_;
    QTimer timer_{this};
};

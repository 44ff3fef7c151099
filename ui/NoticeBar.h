#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QPushButton;

/// A line for the user that goes by itself, with a button for what can be done about it. It takes no room and
/// no focus while it has nothing to say. GUI thread only.
class NoticeBar : public QWidget
{
    Q_OBJECT

public:
    /// `action`: the button's caption; without one there is none.
    explicit NoticeBar(QWidget* parent, const QString& action = QString());

    /// Shows the text for so long, in place of the one before.
    void say(const QString& text, int milliseconds);
    void dismiss();
    QString text() const; ///< empty while nothing is shown

Q_SIGNALS:
    void pressed(); ///< the button; the bar has been dismissed
    void expired();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* label_;
    QPushButton* button_ = nullptr;
    QTimer timer_{this};
};

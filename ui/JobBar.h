#pragma once

#include <QTimer>
#include <QWidget>

#include <memory>

class Job;
class QLabel;
class QProgressBar;
class QPushButton;

/// What is being done, how far it has come, and a button that cancels it; Escape does the same while the
/// button has the keyboard. Shows itself when the work lasts noticeably long, and goes with it. Takes no
/// focus. GUI thread only.
class JobBar : public QWidget
{
    Q_OBJECT

public:
    explicit JobBar(QWidget* parent = nullptr);

    /// Shows this work, in place of the one before. It has ended when nobody else holds `job` any more.
    void follow(const QString& text, const std::shared_ptr<Job>& job);

Q_SIGNALS:
    void ended(); ///< the work; the bar is hidden

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void appear();
    void look();
    void cancel();
    void leave();

    std::weak_ptr<Job> job_;
    QLabel* text_;
    QLabel* count_;
    QProgressBar* bar_;
    QPushButton* cancel_;
    QTimer patience_{this};
    QTimer watch_{this};
};

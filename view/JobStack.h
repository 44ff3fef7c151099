#pragma once

#include <QWidget>

#include <memory>

class Job;

/// The bars of all work that goes on, one above the other, at the lower edge of a view. GUI thread only.
class JobStack : public QWidget
{
    Q_OBJECT

public:
    explicit JobStack(QWidget& view);

    /// As JobBar::follow(), beside the others.
    void follow(const QString& text, const std::shared_ptr<Job>& job);
};

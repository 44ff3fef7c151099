#pragma once

#include <QMargins>
#include <QObject>

class QWidget;

/// Keeps a child at one place of its parent, in its own size, when either changes. GUI thread only.
class Anchor : public QObject
{
    Q_OBJECT

public:
    /// What the tool bar needs at the upper edge of the preview.
    static constexpr int belowTools = 54; // px

    /// Belongs to `child`. @param free px that stay free at the edges
    Anchor(QWidget& child, Qt::Alignment place, const QMargins& free = {10, belowTools, 10, 10});

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void settle();

    QWidget& child_;
    Qt::Alignment place_;
    QMargins free_;
};

#pragma once

#include "mirvakcamera.h"

#include <QWidget>

/// Says in the lower left corner of the preview, in a few words, what would spoil the page that is captured
/// now. It takes no focus and no clicks and lies below all other signs. GUI thread only.
class ShotHint : public QWidget
{
    Q_OBJECT

public:
    /// `view` is the preview; `below` px stay free at its lower edge. It starts hidden.
    ShotHint(QWidget& view, int below);

    /// Hidden where nothing is wrong.
    void tell(MirvakShot shot);
    const QString& text() const { return text_; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    static QString textOf(MirvakShot shot);

    QString text_;
};

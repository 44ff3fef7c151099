#pragma once

#include <QPixmap>
#include <QWidget>

class QPushButton;

/// The first side of a merge in a corner of the preview, until the second one is taken, with a button that
/// gives the merge up; Escape does so too. GUI thread only.
class FirstSide : public QWidget
{
    Q_OBJECT

public:
    /// `view` is the preview. It starts hidden.
    explicit FirstSide(QWidget& view);

    /// Null hides it.
    void showPicture(const QPixmap& picture);

    QSize sizeHint() const override;

Q_SIGNALS:
    void givenUp();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect pictureRect() const;

    QPixmap picture_;
    QPushButton* close_;
};

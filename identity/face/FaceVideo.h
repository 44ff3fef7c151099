#pragma once

#include "FrameMailbox.h"

#include <QPixmap>
#include <QWidget>

#include <functional>

/// A live picture in its own proportions, in the middle of black, with a frame around the face that was found
/// in it. GUI thread only, except SetImageData().
class FaceVideo : public QWidget
{
    Q_OBJECT

public:
    explicit FaceVideo(QWidget* parent = nullptr);

    /// Shows the picture, unless it is null; of several at once the newest. Any thread.
    void SetImageData(const QImage& image);
    /// Asked with every painting where the face is: in pixels of the picture, null for none.
    void setFaceFinder(std::function<QRectF()> finder) { findFace_ = std::move(finder); }
    /// What stands there while there is no picture.
    void setPlaceholder(const QString& text);
    void clear();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void takeFrame();
    QRectF place() const;

    FrameMailbox mailbox_;
    QPixmap frame_;
    QString placeholder_;
    std::function<QRectF()> findFace_;
};

#pragma once

#include "PictureEdits.h"

#include <QImage>
#include <QWidget>

#include <array>

class CropCorner;

/// A picture with four corners that are dragged, or moved by the arrow keys, to the edges of the page. What
/// lies outside them is dimmed. GUI thread only.
class CropView : public QWidget
{
    Q_OBJECT

public:
    explicit CropView(QWidget* parent = nullptr);

    void show(const QImage& picture, const PictureEdits::Corners& corners);
    using QWidget::show;
    void setCorners(const PictureEdits::Corners& corners);
    const PictureEdits::Corners& corners() const { return corners_; }
    /// Whether the corners enclose a page: none has passed over to another side.
    bool isUsable() const;
    QSize sizeHint() const override { return {720, 540}; }

Q_SIGNALS:
    void changed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QRectF pictureRect() const; ///< where the picture is, px
    QPointF shown(const QPointF& corner) const;
    void placeCorners();
    void drag(std::size_t index, const QPointF& to);

    QImage picture_;
    PictureEdits::Corners corners_;
    std::array<CropCorner*, 4> handles_;
};

/// The corners of the whole picture.
PictureEdits::Corners wholePicture();

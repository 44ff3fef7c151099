#include "MoveVideoWidget.h"

#include "InsetPlace.h"
#include "Look.h"
#include "MoveVideoView.h"

#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int border = 2; // px, which keep the two pictures apart

} // namespace

MoveVideoWidget::MoveVideoWidget(QWidget* parent) : QWidget(parent), view_(new MoveVideoView(this))
{
    setObjectName(QStringLiteral("MoveVideoWidget"));
    hide(); // a child that is made while its parent is shown waits for its place
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::OpenHandCursor);
    setAccessibleName(tr("Second camera"));
    connect(view_, &MoveVideoView::frameSizeChanged, this, [this] {
        if (corner_ >= 0)
            takeCorner();
        else
            resize(fittingSize());
    });
}

void MoveVideoWidget::SetMvDataFrame(const QImage& image)
{
    view_->SetFrame(image);
}

void MoveVideoWidget::SetCaption(const QString& caption)
{
    view_->SetCaption(caption);
}

QSize MoveVideoWidget::fittingSize() const
{
    return main_.isEmpty() ? size() : insetPlace::size(main_, view_->frameSize());
}

void MoveVideoWidget::showAt(int corner)
{
    corner_ = corner > 0 && corner <= 3 ? corner : 0;
    takeCorner();
    show();
    lower(); // the tool bar lies above it
}

void MoveVideoWidget::takeCorner()
{
    resize(fittingSize());
    move(insetPlace::position(corner_, main_, size()));
}

void MoveVideoWidget::ShowMvVideoWgt(int x, int y, int w, int h)
{
    corner_ = -1;
    setGeometry(x, y, w, h);
    show();
    lower();
}

void MoveVideoWidget::MoveMvVideoWgt(int x, int y)
{
    corner_ = -1;
    move(x, y);
}

void MoveVideoWidget::SetMainPos(const QPoint& pos)
{
    if (main_.isEmpty())
        main_.moveTopLeft(pos);
    else
        followMain(QRect(pos, main_.size()));
}

void MoveVideoWidget::SetMainSize(const QSize& size)
{
    followMain(QRect(main_.topLeft(), size));
}

void MoveVideoWidget::SetOffsetPos(const QPoint& offset)
{
    const QPoint place = main_.topLeft() + offset;
    MoveMvVideoWgt(place.x(), place.y());
}

void MoveVideoWidget::followMain(const QRect& main)
{
    if (main.isEmpty() || main == main_)
        return; // without a picture the last place counts
    const QRect before = main_;
    main_ = main;
    if (corner_ >= 0) {
        takeCorner();
        return;
    }
    move(insetPlace::carried(pos(), before, main));
    if (main.size() != before.size() && !before.isEmpty())
        resize(fittingSize());
}

void MoveVideoWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    isDragged_ = true;
    pressPoint_ = mapToParent(event->pos());
    posAtPress_ = pos();
    setCursor(Qt::ClosedHandCursor);
}

void MoveVideoWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!isDragged_)
        return;
    const QPoint wanted = posAtPress_ + mapToParent(event->pos()) - pressPoint_;
    const QPoint place = insetPlace::dragged(wanted, posAtPress_, size(), main_);
    if (place != pos())
        MoveMvVideoWgt(place.x(), place.y());
}

void MoveVideoWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    isDragged_ = false;
    setCursor(Qt::OpenHandCursor);
}

void MoveVideoWidget::resizeEvent(QResizeEvent*)
{
    view_->setGeometry(rect().adjusted(border, border, -border, -border));
}

void MoveVideoWidget::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), Look::strip);
}

#include "VideoView.h"

#include "FrozenBar.h"
#include "FullScreen.h"
#include "ToolBar.h"
#include "ToolBarHost.h"
#include "ViewOverlay.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QWheelEvent>

namespace {

constexpr int rectangleOption = 2;   // the cropping option that lets the user draw
constexpr int noticeRoom = 62;       // px at the lower edge, where a line for the user may stand
constexpr int smallestRectangle = 5; // px; less is a click, and a page cropped to it would be lost
const QColor ground(32, 32, 32);

/// Posted by other threads: there is something new to paint.
QEvent::Type wakeUp()
{
    static const int type = QEvent::registerEventType();
    return QEvent::Type(type);
}

QRect spannedRect(const QPoint& a, const QPoint& b)
{
    return QRect(QPoint(qMin(a.x(), b.x()), qMin(a.y(), b.y())),
                 QPoint(qMax(a.x(), b.x()), qMax(a.y(), b.y())));
}

bool haveSameShape(const QSize& a, const QSize& b)
{
    return qint64(a.width()) * b.height() == qint64(b.width()) * a.height();
}

QRect scaledRect(const QRect& rect, qreal factor)
{
    return QRect(QPoint(qRound(rect.left() * factor), qRound(rect.top() * factor)),
                 QSize(qRound(rect.width() * factor), qRound(rect.height() * factor)));
}

} // namespace

VideoView::VideoView(QWidget* parent)
    : QWidget(parent), info_(tr("Please waiting...")), toolBar_(new ToolBar(this)),
      toolBarHost_(new ToolBarHost(toolBar_, this)), frozenBar_(new FrozenBar(*this)),
      mark_(*this, noticeRoom), fullScreen_(new FullScreen(*this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&notice_, &ViewNotice::changed, this, qOverload<>(&QWidget::update));
    connect(frozenBar_, &FrozenBar::saveClicked, this, &VideoView::saveFrozenClicked);
    geometry_.setViewSize(size());
    connect(fullScreen_, &FullScreen::toggled, this, [this](bool on) { geometry_.setExpanding(on); });
    connectToolBar();
}

VideoView::~VideoView()
{
    delete toolBarHost_; // it watches the focus, which moves when the tool bar goes
}

void VideoView::SetImageData(const QImage& frame)
{
    if (!frame.isNull() && mailbox_.put(frame))
        QCoreApplication::postEvent(this, new QEvent(wakeUp()));
}

void VideoView::SetPageMark(const PageMark& mark)
{
    if (mark_.set(mark))
        QCoreApplication::postEvent(this, new QEvent(wakeUp()));
}

void VideoView::customEvent(QEvent* event)
{
    if (event->type() != wakeUp())
        return;
    takeFrame();
    update();
}

void VideoView::takeFrame()
{
    const QImage newest = mailbox_.take();
    if (!newest.isNull() && !frozen_)
        setFrame(newest);
    mark_.take(isLive());
}

void VideoView::setFrame(const QImage& newest)
{
    const QSize before = frame_.size();
    frame_ = newest;
    if (before == frame_.size())
        return;
    geometry_.setSourceSize(frame_.size());
    if (!shape_.isEmpty() && !haveSameShape(shape_, frame_.size()))
        setSelection(QRect());
    shape_ = frame_.size();
    relayout();
}

void VideoView::ClearFrame()
{
    mailbox_.take();
    frame_ = QImage();
    scaler_ = FrameScaler();
    setFrozen(false);
    mark_.clear();
    geometry_.setSourceSize(QSize());
    relayout();
}

void VideoView::SetShowInfo(const QString& text)
{
    info_ = text;
    update();
}

void VideoView::ShowNotice(const QString& text)
{
    notice_.say(text);
}

void VideoView::SetBooklineEnable(bool enable)
{
    if (bookLine_.exchange(enable) != enable)
        QCoreApplication::postEvent(this, new QEvent(wakeUp()));
}

void VideoView::SetMouseStatue(bool reacts)
{
    mouseReacts_ = reacts;
    pressed_ = false;
    drawing_ = QRect();
    updateCursor();
    update();
}

void VideoView::SetViewAdap()
{
    geometry_.fit();
    relayout();
}

void VideoView::SetHotKeyZoom(int direction)
{
    if (!selectionMode_)
        changeZoom(direction);
}

void VideoView::changeZoom(int direction)
{
    if (direction == 1)
        geometry_.zoomBy(1);
    else if (direction == 2)
        geometry_.zoomBy(-1);
    relayout();
}

void VideoView::toggleFreeze()
{
    setFrozen(!frozen_ && !frame_.isNull());
}

void VideoView::setFrozen(bool frozen)
{
    if (frozen_ == frozen)
        return;
    frozen_ = frozen;
    frozenBar_->offerSaving(false);
    frozenBar_->setVisible(frozen);
    mark_.take(isLive());
    Q_EMIT frozenChanged(frozen);
    update();
}

void VideoView::ShowStill(const QImage& still)
{
    if (!frozen_ || still.isNull())
        return;
    setFrame(still);
    frozenBar_->offerSaving(true);
    update();
}

void VideoView::onDeskewChanged(int option, bool checked)
{
    selectionMode_ = option == rectangleOption && checked;
    pressed_ = false;
    drawing_ = QRect();
    toolBar_->SetCroppingOnly(selectionMode_);
    toolBarHost_->setDrawing(selectionMode_);
    if (selectionMode_)
        geometry_.fit();
    setSelection(QRect());
    relayout();
}

QRect VideoView::getSelectedRect() const
{
    return selection_.source();
}

void VideoView::setSelection(const QRect& rectangle)
{
    selection_.set(rectangle, geometry_);
    update();
}

void VideoView::relayout()
{
    selection_.publish(geometry_);
    updateCursor();
    update();
    if (announced_ == geometry_.displayed())
        return;
    announced_ = geometry_.displayed();
    Q_EMIT pictureMoved(announced_);
}

void VideoView::updateCursor()
{
    const QSize shown = geometry_.displayed().size();
    const bool isLarger = shown.width() > width() || shown.height() > height();
    if (!mouseReacts_)
        setCursor(Qt::ArrowCursor);
    else if (selectionMode_)
        setCursor(Qt::CrossCursor);
    else if (pressed_)
        setCursor(Qt::ClosedHandCursor);
    else
        setCursor(isLarger ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void VideoView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    if (frame_.isNull())
        overlay::drawInfo(painter, rect(), info_);
    else
        paintPicture(painter);
    notice_.paint(painter, rect());
}

void VideoView::paintPicture(QPainter& painter)
{
    const QRect displayed = geometry_.displayed();
    const QRect visible = geometry_.visible();
    const qreal ratio = devicePixelRatioF();
    const QRect whole = scaledRect(QRect(QPoint(), displayed.size()), ratio);
    const QRect part = scaledRect(visible.translated(-displayed.topLeft()), ratio) & whole;
    painter.drawImage(visible, scaler_.scale(frame_, whole.size(), part));
    mark_.paint(painter, displayed, frame_.size());
    if (bookLine_)
        overlay::drawBookLine(painter, rect(), displayed);
    const QRect selected = pressed_ ? drawing_ : selection_.inView(geometry_);
    if (selectionMode_ && !selected.isNull())
        overlay::drawSelection(painter, selected);
}

void VideoView::resizeEvent(QResizeEvent*)
{
    geometry_.setViewSize(size());
    relayout();
}

void VideoView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !mouseReacts_)
        return;
    pressed_ = true;
    pressPoint_ = event->pos();
    updateCursor();
}

void VideoView::mouseMoveEvent(QMouseEvent* event)
{
    if (!pressed_)
        return;
    if (selectionMode_) {
        drawing_ = spannedRect(pressPoint_, event->pos());
        update();
        return;
    }
    geometry_.panBy(event->pos() - pressPoint_);
    pressPoint_ = event->pos();
    relayout();
}

void VideoView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !pressed_)
        return;
    pressed_ = false;
    drawing_ = QRect();
    updateCursor();
    if (!selectionMode_)
        return;
    const QRect drawn = spannedRect(pressPoint_, event->pos());
    const bool isClick = drawn.width() < smallestRectangle || drawn.height() < smallestRectangle;
    const QRect chosen = isClick ? QRect() : drawn;
    setSelection(chosen);
    Q_EMIT rectSelected(chosen);
}

void VideoView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT doubClickSign();
}

void VideoView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const QPoint delta = event->angleDelta();
    if (delta.isNull() || !mouseReacts_)
        return;
    if (selectionMode_)
        SetViewAdap();
    else
        changeZoom(delta.y() > 0 ? 1 : 2);
}

void VideoView::keyPressEvent(QKeyEvent* event)
{
    if (fullScreen_->isOn() && event->key() == Qt::Key_Escape)
        toggleFullscreen();
    else
        QWidget::keyPressEvent(event);
}

void VideoView::toggleFullscreen()
{
    fullScreen_->toggle();
    relayout();
}

#include "ControlOverlay.h"

#include "ControlPanel.h"
#include "FocusMark.h"
#include "IconButton.h"
#include "PictureClicks.h"
#include "VideoView.h"

#include <QEvent>

namespace {

constexpr int gap = 8;            // px around the panel
constexpr int toolBarHeight = 52; // px at the top that stay free for it

} // namespace

ControlOverlay::ControlOverlay(VideoView& view, QObject* parent)
    : QObject(parent), view_(view), button_(new IconButton(&view)), clicks_(new PictureClicks(view, this))
{
    makeButton();
    view_.installEventFilter(this);
    connect(clicks_, &PictureClicks::clicked, this, [this](const QPointF& place, const QPoint& at) {
        mark_->showAt(at);
        Q_EMIT focusWanted(place);
    });
    connect(&view_, &VideoView::pictureMoved, this, &ControlOverlay::hideFocusMark);
    place();
}

void ControlOverlay::makeButton()
{
    button_->setObjectName(QStringLiteral("buttonControls"));
    button_->setToolTip(tr("Camera controls"));
    button_->setAccessibleName(tr("Camera controls"));
    button_->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard where it is
    button_->setCursor(Qt::ArrowCursor);
    button_->setIcon(QIcon(QStringLiteral(":/images/common/images/common/controls.png")));
    button_->setIconSize({24, 24});
    button_->setFixedSize(36, 52);
    button_->setStyleSheet(QStringLiteral(
        "QPushButton { background-color: rgba(25, 90, 100, 190); border: 1px solid rgba(107, 176, 205, 160);"
        " border-right: none; border-top-left-radius: 8px; border-bottom-left-radius: 8px; }"
        "QPushButton:hover { background-color: rgb(36, 112, 124); }"
        "QPushButton:pressed { background-color: rgb(14, 62, 70); }"));
    connect(button_, &QPushButton::clicked, this, &ControlOverlay::toggle);
    button_->show();
    QWidget* last = &view_;
    while (view_.isAncestorOf(last->nextInFocusChain()) && last->nextInFocusChain() != button_)
        last = last->nextInFocusChain();
    QWidget::setTabOrder(last, button_); // the view, and its tool bar, come first
}

void ControlOverlay::makePanel()
{
    panel_ = new ControlPanel(&view_);
    panel_->followInTabOrder(button_);
    mark_ = new FocusMark(&view_);
    connect(panel_, &ControlPanel::changed, this, &ControlOverlay::changed);
    connect(panel_, &ControlPanel::resetAll, this, &ControlOverlay::resetAll);
    connect(panel_, &ControlPanel::closeWanted, this, &ControlOverlay::toggle);
}

bool ControlOverlay::isOpen() const
{
    return panel_ && !panel_->isHidden();
}

void ControlOverlay::toggle()
{
    const bool opens = !isOpen();
    if (!panel_)
        makePanel();
    const bool byKeyboard = button_->hasFocus();
    const bool hadKeyboard = panel_->isAncestorOf(view_.window()->focusWidget());
    if (!opens && hadKeyboard)
        button_->setFocus(Qt::OtherFocusReason); // it would go to whatever comes next in the window
    panel_->setVisible(opens);
    clicks_->setEnabled(opens);
    mark_->hide();
    place();
    Q_EMIT opened(opens);
    if (opens && byKeyboard)
        panel_->takeKeyboard();
}

void ControlOverlay::showControls(const ControlList& controls, bool isCameraOpen)
{
    if (!panel_)
        return;
    panel_->showControls(controls, isCameraOpen);
    place();
}

void ControlOverlay::hideFocusMark()
{
    if (mark_)
        mark_->hide();
}

void ControlOverlay::place()
{
    int right = view_.width();
    if (isOpen()) {
        const int width = std::min(ControlPanel::fullWidth, view_.width() - button_->width() - gap);
        const int room = view_.height() - toolBarHeight - gap;
        const int height = std::min(panel_->sizeHint().height(), room);
        right -= width + gap;
        panel_->setGeometry(right, toolBarHeight + (room - height) / 2, width, height);
        panel_->raise();
    }
    button_->move(right - button_->width(), (view_.height() - button_->height()) / 2);
    button_->raise();
}

bool ControlOverlay::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        place();
    return false;
}

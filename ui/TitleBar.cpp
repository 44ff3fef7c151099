#include "TitleBar.h"

#include "Look.h"
#include "SystemDrag.h"

#include "ui_TitleBar.h"

#include <QDebug>
#include <QMouseEvent>

namespace {

QIcon commonIcon(const char* name)
{
    return QIcon(QStringLiteral(":/images/common/images/common/%1.png").arg(QLatin1String(name)));
}

} // namespace

TitleBar::TitleBar(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui_TitleBar>())
{
    ui_->setupUi(this);
    SetIcon(commonIcon("lumro"));
    for (const QPushButton* button :
         {ui_->buttonSkin, ui_->buttonMinimize, ui_->buttonMaximize, ui_->buttonClose})
        connect(button, &QPushButton::clicked, this, &TitleBar::onBtnClicked);
}

TitleBar::~TitleBar() = default;

void TitleBar::SetTitle(const QString& title)
{
    ui_->labelTitle->setText(title);
}

void TitleBar::SetIcon(const QIcon& icon)
{
    ui_->labelIcon->setPixmap(icon.pixmap(window()->windowHandle(), ui_->labelIcon->maximumSize()));
}

void TitleBar::ShowSkinButton(bool show)
{
    ui_->buttonSkin->setVisible(show);
}

void TitleBar::ShowMinimizeButton(bool show)
{
    ui_->buttonMinimize->setVisible(show);
}

void TitleBar::ShowMaximizeButton(bool show)
{
    ui_->buttonMaximize->setVisible(show);
}

void TitleBar::ShowCloseButton(bool show)
{
    ui_->buttonClose->setVisible(show);
}

void TitleBar::EnableWindowMove(bool enable)
{
    moveEnabled_ = enable;
}

void TitleBar::onBtnClicked()
{
    const QObject* button = sender();
    if (button == ui_->buttonMinimize) {
        window()->showMinimized();
    } else if (button == ui_->buttonMaximize) {
        toggleMaximized();
    } else if (button == ui_->buttonClose) {
        Q_EMIT clickedclosesign();
    } else if (button == ui_->buttonSkin) {
        qDebug("skin");
    }
}

void TitleBar::toggleMaximized()
{
    if (window()->isMaximized())
        window()->showNormal();
    else
        window()->showMaximized();
}

bool TitleBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == window() && event->type() == QEvent::WindowStateChange)
        showMaximizedState();
    return QWidget::eventFilter(watched, event);
}

void TitleBar::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    window()->installEventFilter(this); // a filter that is there already only moves to the front
    showMaximizedState();
    leaveFirstFocus();
}

/// A window starts with the focus on the first control in its tab order, which is often the bar's own
/// "minimize". Gives it to the window's first own control instead.
void TitleBar::leaveFirstFocus()
{
    if (window()->focusWidget())
        return;
    QWidget* next = ui_->buttonClose->nextInFocusChain();
    const auto takesFocus = [this](const QWidget* widget) {
        return widget->focusPolicy() & Qt::TabFocus && widget->isEnabled() && widget->isVisibleTo(window());
    };
    while (next != ui_->buttonClose && (isAncestorOf(next) || !takesFocus(next)))
        next = next->nextInFocusChain();
    if (next != ui_->buttonClose)
        next->setFocus(Qt::OtherFocusReason);
}

void TitleBar::showMaximizedState()
{
    const bool maximized = window()->isMaximized();
    const QString name = maximized ? tr("Restore") : tr("Maximize");
    ui_->buttonMaximize->setIcon(commonIcon(maximized ? "restore" : "maximize"));
    ui_->buttonMaximize->setToolTip(name);
    ui_->buttonMaximize->setAccessibleName(name);
}

void TitleBar::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

void TitleBar::mousePressEvent(QMouseEvent* event)
{
    if (window()->isMaximized() || !moveEnabled_ || event->button() != Qt::LeftButton)
        return;
    pressed_ = true;
    pressGlobal_ = event->globalPos();
    windowPosAtPress_ = window()->pos();
}

void TitleBar::mouseMoveEvent(QMouseEvent* event)
{
    if (!pressed_ || !moveEnabled_ || !window()->isWindow())
        return;
    if (systemDrag::move(*window()))
        pressed_ = false;
    else
        window()->move(windowPosAtPress_ + event->globalPos() - pressGlobal_);
}

void TitleBar::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        pressed_ = false;
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    pressed_ = false;
    if (event->button() == Qt::LeftButton && !ui_->buttonMaximize->isHidden())
        toggleMaximized();
}

#include "AutoScan.h"

#include "Look.h"

#include "ui_AutoScan.h"

#include <QShowEvent>

#include <algorithm>

namespace {

constexpr int shortest = 1; // seconds
constexpr int longest = 30; // seconds
constexpr int edge = 10;    // px left free below the dialog

} // namespace

AutoScan::AutoScan(QWidget* parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
{
    setWindowModality(Qt::WindowModal);
    // The coarse kind may be a twentieth off, which an hour of scanning would show.
    for (QTimer* timer : {&scanTimer_, &tickTimer_})
        timer->setTimerType(Qt::PreciseTimer);
    connect(&scanTimer_, &QTimer::timeout, this, &AutoScan::onInterval);
    connect(&tickTimer_, &QTimer::timeout, this, &AutoScan::onSecond);
}

AutoScan::~AutoScan() = default;

void AutoScan::build()
{
    if (ui_)
        return;
    ui_ = std::make_unique<Ui_AutoScan>();
    ui_->setupUi(this);
    Look::dress(*ui_->frameBody);
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    ui_->titleBar->ShowMaximizeButton(false);
    layout()->setSizeConstraint(QLayout::SetFixedSize); // the dialog follows its texts
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &AutoScan::reject);
    connect(ui_->buttonStop, &QPushButton::clicked, this, &AutoScan::reject);
}

void AutoScan::SetTitleName(const QString& title)
{
    build();
    ui_->titleBar->SetTitle(title);
    setWindowTitle(title);
}

void AutoScan::SetTimerScan(int seconds)
{
    begin(true);
    interval_ = std::clamp(seconds, shortest, longest);
    ui_->progress->setRange(0, interval_);
    startCountdown();
    scanTimer_.start(interval_ * 1000);
}

void AutoScan::SetAutopageScan()
{
    begin(false);
    ui_->progress->setRange(0, 0); // busy
}

void AutoScan::begin(bool byTimer)
{
    build();
    halt();
    isTimerScan_ = byTimer;
    ui_->panelAutoPage->setVisible(!byTimer);
    ui_->panelTimer->setVisible(byTimer);
    place(); // the panels differ in size
}

void AutoScan::SetAutoPageNum()
{
    build();
    showCount(count_ + 1);
}

void AutoScan::onInterval()
{
    Q_EMIT timerScanReady();
    if (!scanTimer_.isActive()) // what the signal started has ended the scan
        return;
    if (!countsReported_)
        showCount(count_ + 1);
    startCountdown(); // in step again, should the program have been busy for a while
}

void AutoScan::startCountdown()
{
    remaining_ = interval_;
    onSecond();
    tickTimer_.start(1000);
}

void AutoScan::onSecond()
{
    ui_->labelCountdown->setText(QString::number(remaining_));
    ui_->progress->setValue(interval_ - remaining_);
    --remaining_;
    if (remaining_ == 0)
        remaining_ = interval_;
}

void AutoScan::showCount(int count)
{
    count_ = count;
    for (QLabel* label : {ui_->labelPageCount, ui_->labelTimerCount})
        label->setText(QString::number(count));
}

void AutoScan::halt()
{
    scanTimer_.stop();
    tickTimer_.stop();
    if (ui_)
        showCount(0);
}

void AutoScan::reject()
{
    halt();
    QDialog::reject();
    Q_EMIT autoscanStop();
}

void AutoScan::setVisible(bool visible)
{
    if (visible)
        build();
    QDialog::setVisible(visible);
}

void AutoScan::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (event->spontaneous())
        return;
    ui_->buttonStop->setFocus();
    place();
}

void AutoScan::place()
{
    if (!parentWidget() || !isVisible())
        return;
    ui_->frameBody->layout()->activate(); // now, not with the next events
    layout()->activate();
    const QRect window = parentWidget()->window()->geometry();
    move(window.center().x() - width() / 2, window.bottom() + 1 - edge - height());
}

void AutoScan::hideEvent(QHideEvent* event)
{
    QDialog::hideEvent(event);
    if (!event->spontaneous())
        halt(); // nobody may go on taking pictures unseen
}

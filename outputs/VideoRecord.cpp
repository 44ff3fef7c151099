#include "VideoRecord.h"

#include "ComeForward.h"
#include "FolderOffer.h"
#include "Look.h"

#include "ui_VideoRecord.h"

#include <QCloseEvent>
#include <QScreen>

#include <chrono>

namespace {

constexpr std::chrono::seconds tick(1);
constexpr int iconSize = 32;

} // namespace

VideoRecord::VideoRecord(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      ui_(std::make_unique<Ui_VideoRecord>()), prefix_(tr("Recording video:"))
{
    ui_->setupUi(this);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(tr("Video Record"));
    Look::dress(*ui_->frameBody);
    // The style's own icons are drawn for light grounds.
    const QIcon icon(QStringLiteral(":/images/common/images/common/video.png"));
    ui_->labelIcon->setPixmap(icon.pixmap(iconSize));
    ui_->titleBar->SetTitle(windowTitle());
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    ui_->titleBar->ShowMaximizeButton(false);
    showSeconds(prefix_, 0);
    timer_.setInterval(tick);
    timer_.setTimerType(
        Qt::PreciseTimer); // a coarse one runs late by up to a twentieth, and the count with it
    connect(&timer_, &QTimer::timeout, this, &VideoRecord::onTimeout);
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &QWidget::close);
    connect(ui_->ButtonStop, &QPushButton::clicked, this, &VideoRecord::onStop);
}

VideoRecord::~VideoRecord() = default;

void VideoRecord::StartRecord(const QString& path)
{
    filePath_ = path;
    recording_ = true;
    ui_->ButtonStop->setText(tr("Stop"));
    ShowNote(QString());
    Resume();
}

void VideoRecord::Resume()
{
    showSeconds(prefix_, filmTime(0));
    timer_.start();
    comeForward(*this);
    ui_->ButtonStop->setFocus();
}

void VideoRecord::onTimeout()
{
    showSeconds(prefix_, filmTime(seconds_ + 1));
}

void VideoRecord::ShowNote(const QString& note)
{
    ui_->labelNote->setText(note);
}

void VideoRecord::ShowEnded(int seconds, const QString& why)
{
    timer_.stop();
    recording_ = false;
    showSeconds(tr("Recorded:"), seconds);
    ShowNote(why);
    ui_->ButtonStop->setText(tr("Close"));
}

void VideoRecord::onStop()
{
    if (!recording_) {
        close();
        return;
    }
    timer_.stop();
    Q_EMIT recordstoped();
    if (!recording_) // by an error, which is shown now
        return;
    recording_ = false;
    const FolderOffer offer{tr("Tip"),
                            tr("Record finished"),
                            tr("Do you want to open the video directory?"),
                            tr("Open Directory"),
                            tr("Finish")};
    offer.make(filePath_);
    Q_EMIT videoRecordGenerated(filePath_);
    close();
}

void VideoRecord::showSeconds(const QString& prefix, int seconds)
{
    seconds_ = seconds;
    ui_->labelTime->setText(QStringLiteral("%1 %2s").arg(prefix).arg(seconds));
}

void VideoRecord::closeEvent(QCloseEvent* event)
{
    timer_.stop();
    showSeconds(prefix_, 0);
    QWidget::closeEvent(event);
    if (recording_)
        Q_EMIT leftRunning();
}

void VideoRecord::showEvent(QShowEvent*)
{
    if (const QWidget* owner = parentWidget()) {
        move(owner->x() + owner->width() - width(), owner->y() + owner->height() - height());
        return;
    }
    const QSize free = (screen()->availableSize() - size()) / 2;
    move(free.width(), free.height());
}

void VideoRecord::paintEvent(QPaintEvent*)
{
    Look::paintBackground(*this);
}

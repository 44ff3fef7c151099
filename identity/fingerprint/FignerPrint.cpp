#include "FignerPrint.h"

#include "ConfigSettings.h"
#include "FileNaming.h"
#include "Look.h"
#include "zaz.h"

#include "ui_FignerPrint.h"

#include <QDateTime>
#include <QDir>
#include <QShowEvent>

#include <cstdio>

namespace {

constexpr unsigned address = 0xFFFFFFFF;
constexpr unsigned char password[4] = {};
constexpr int onlyMode = 0, usb = 1, usbDevice = 2, rate = 2, packet = 2;

QString folderOfCaptures()
{
    ConfigSettings store;
    return FileNaming(store).directory();
}

} // namespace

FignerPrint::FignerPrint(QWidget* parent, void*)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), ui_(std::make_unique<Ui_FignerPrint>()),
      folder_(folderOfCaptures()), sensorMode_(mode_.read()),
      capture_([this] { QMetaObject::invokeMethod(this, &FignerPrint::readNews, Qt::QueuedConnection); })
{
    ui_->setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false); // the program ends with its main window
    setAccessibleName(tr("FingerPrint"));
    Look::dress(*ui_->frameBody);
    ui_->titleBar->SetTitle(tr("FingerPrint"));
    ui_->titleBar->ShowSkinButton(false);
    ui_->titleBar->ShowMaximizeButton(false);
    ui_->titleBar->ShowMinimizeButton(false);
    ui_->titleBar->EnableWindowMove(false);
    ui_->frameReserved->hide();
    connect(ui_->titleBar, &TitleBar::clickedclosesign, this, &QWidget::close);
    connect(ui_->buttonCapture, &QPushButton::clicked, this, &FignerPrint::capture);
    connect(ui_->buttonMode, &QPushButton::clicked, this, &FignerPrint::changefptpye);
    connect(this, &FignerPrint::setUIStatus, this, &FignerPrint::onGetUIStatus);
}

FignerPrint::~FignerPrint() = default;

void FignerPrint::capture()
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmsszzz"));
    QDir().mkdir(folder_); // it may not be there, or no longer
    GetFPFromDev(QStringLiteral("%1/%2.%3").arg(folder_, time, QStringLiteral("bmp")));
}

void FignerPrint::GetFPFromDev(const QString& path)
{
    ui_->labelPicture->clear();
    ui_->labelNote->clear();
    ZAZ_MODE(onlyMode);
    ZAZ_SETPATH(sensorMode_, usb);
    int handle = 0;
    if (ZAZOpenDeviceEx(&handle, usbDevice, nullptr, rate, packet) == ZAZ_OK &&
        ZAZVfyPwd(handle, address, password) != ZAZ_OK) {
        std::puts("open fp dev failed(usb)!");
        ZAZCloseDeviceEx(handle);
        Q_EMIT setUIStatus(tr("Open FP device failed"));
        return;
    }
    Q_EMIT setUIStatus(tr("Please put your finger on it"));
    capture_.start(handle, address, path.isEmpty() ? "./fp1.bmp" : path.toStdString());
}

int FignerPrint::initfp() const
{
    return ZAZ_MODE(onlyMode) == ZAZ_OK ? ZAZ_SETPATH(sensorMode_, usb) : -1;
}

void FignerPrint::readNews()
{
    for (const FingerCapture::News& news : capture_.takeNews())
        tell(news);
}

void FignerPrint::tell(const FingerCapture::News& news)
{
    const QString path = QString::fromStdString(news.path);
    switch (news.kind) {
    case FingerCapture::News::saved:
        setimage(path);
        Q_EMIT setUIStatus(tr("Get FP data Success"));
        Q_EMIT setImg2Thumb(path);
        break;
    case FingerCapture::News::timeout:
        Q_EMIT setUIStatus(tr("Read FP data timeout"));
        break;
    case FingerCapture::News::lost:
        ui_->labelNote->setText(tr("The sensor does not answer any more."));
        break;
    case FingerCapture::News::notSaved:
        ui_->labelNote->setText(
            tr("The picture could not be saved. Please check the folder %1.").arg(folder_));
        break;
    }
}

void FignerPrint::changefptpye()
{
    if (!mode_.toggle())
        ui_->labelNote->setText(tr("The mode stays as it is."));
    else
        ui_->labelNote->setText(tr("Mode %1 holds from the next start on.").arg(mode_.read()));
}

void FignerPrint::onGetUIStatus(const QString& text)
{
    ui_->labelStatus->setText(text);
}

void FignerPrint::setimage(const QString& file)
{
    setimage(QPixmap(file));
}

void FignerPrint::setimage(const QPixmap& picture)
{
    if (picture.isNull())
        ui_->labelPicture->clear();
    else
        ui_->labelPicture->setPixmap(
            picture.scaled(ui_->labelPicture->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void FignerPrint::setimage(const QImage& picture)
{
    setimage(QPixmap::fromImage(picture));
}

/// Nobody finds the finger of the one before.
void FignerPrint::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        for (QLabel* label : {ui_->labelPicture, ui_->labelStatus, ui_->labelNote})
            label->clear();
    QDialog::showEvent(event);
}

void FignerPrint::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous())
        capture_.stop();
    QDialog::hideEvent(event);
}

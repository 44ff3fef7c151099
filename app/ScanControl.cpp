#include "ScanControl.h"

#include "AutoScan.h"
#include "MainDesk.h"
#include "Settings.h"

ScanControl::ScanControl(MirvakCamera& camera, StillCapture& capture, MainDesk& desk, QWidget& window)
    : desk_(desk), dialog_(new AutoScan(&window)), continuous_(camera, capture)
{
    desk_.addBlocker(dialog_);
    dialog_->countReported();
    connect(dialog_, &AutoScan::timerScanReady, this, &ScanControl::onAutoScanTiemr);
    connect(dialog_, &AutoScan::autoscanStop, this, &ScanControl::onStopAutoScan);
    connect(&continuous_,
            &ContinuousScan::autopageScanSign,
            this,
            &ScanControl::autopageScanSign,
            Qt::DirectConnection);
    connect(this, &ScanControl::autopageScanSign, this, &ScanControl::onPageFound, Qt::QueuedConnection);
    // Both by way of the event loop, from the thread of a timed capture.
    connect(&continuous_, &ContinuousScan::pictureSaved, this, &ScanControl::onSaved);
    connect(&continuous_, &ContinuousScan::saveFailed, &desk_, &MainDesk::tellNotSaved);
}

void ScanControl::onAutoScanner()
{
    if (!desk_.mayCapture())
        return;
    ConfigSettings store;
    const bool byPages = settings::autoScanType.read(store) == 0;
    dialog_->SetTitleName(byPages ? tr("Auto Scan") : tr("Timer Scan"));
    dialog_->show();
    if (byPages) {
        dialog_->SetAutopageScan();
        continuous_.startPages();
    } else {
        dialog_->SetTimerScan(settings::autoScanDelay.read(store));
    }
    desk_.enableTools(false);
}

void ScanControl::onPageFound()
{
    // A page that was found just before the user pressed "Stop" is told of afterwards.
    if (continuous_.watchesPages())
        continuous_.scannerimage([this](std::chrono::seconds timeout) { return desk_.takeFrame(timeout); });
}

/// The strip and the count learn of it together.
void ScanControl::onSaved(const QString& path)
{
    Q_EMIT pictureSaved(path);
    if (dialog_->isVisible()) // else it is the last one of a scan that has been stopped
        dialog_->SetAutoPageNum();
}

void ScanControl::onStopAutoScan()
{
    dialog_->hide();
    continuous_.stop();
    desk_.enableTools(true);
}

#include "ScanControl.h"

#include "AutoScan.h"
#include "MainDesk.h"
#include "Settings.h"

ScanControl::ScanControl(MirvakCamera& camera, StillCapture& capture, MainDesk& desk, QWidget& window)
    : desk_(desk), dialog_(new AutoScan(&window)), continuous_(camera, capture)
{
    desk_.addBlocker(dialog_);
    connect(dialog_, &AutoScan::timerScanReady, this, &ScanControl::onAutoScanTiemr);
    connect(dialog_, &AutoScan::autoscanStop, this, &ScanControl::onStopAutoScan);
    connect(&continuous_,
            &ContinuousScan::autopageScanSign,
            this,
            &ScanControl::autopageScanSign,
            Qt::DirectConnection);
    connect(this, &ScanControl::autopageScanSign, this, &ScanControl::onPageFound, Qt::QueuedConnection);
    connect(&continuous_, &ContinuousScan::pictureSaved, this, &ScanControl::pictureSaved);
    // From the thread of a timed capture this comes through the event loop.
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
    if (continuous_.watchesPages() && continuous_.scannerimage())
        dialog_->SetAutoPageNum();
}

void ScanControl::onStopAutoScan()
{
    dialog_->hide();
    continuous_.stop();
    desk_.enableTools(true);
}

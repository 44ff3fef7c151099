#pragma once

#include "ContinuousScan.h"

#include <QObject>

class AutoScan;
class MainDesk;
class QWidget;

/// Continuous scanning with its dialog: by the clock or page by page, as the settings say. GUI thread only,
/// except checkautopage().
class ScanControl : public QObject
{
    Q_OBJECT

public:
    /// `camera`, `capture` and `desk` are borrowed; the dialog belongs to `window`, which it blocks while it
    /// shows.
    ScanControl(MirvakCamera& camera, StillCapture& capture, MainDesk& desk, QWidget& window);

    void onAutoScanner();
    void onAutoScanTiemr() { continuous_.onAutoScanTiemr(); }
    void onStopAutoScan();
    /// Capture thread.
    void checkautopage(void* image) { continuous_.checkautopage(image); }
    /// Waits for the timed captures that have begun, as ContinuousScan::finish().
    void finish() { continuous_.finish(); }

Q_SIGNALS:
    /// A new page lies still. Emitted on the capture thread.
    void autopageScanSign();
    /// A picture was taken.
    void pictureSaved(const QString& path);

private:
    void onPageFound();
    void onSaved(const QString& path);

    MainDesk& desk_;
    AutoScan* dialog_;
    ContinuousScan continuous_;
};

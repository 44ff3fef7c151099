#pragma once

#include "FrameHandle.h"
#include "Workers.h"

#include <QObject>

#include <memory>

class BarCode;
class CaptureDesk;
class MirvakCamera;

/// One capture, and the contents of all codes on it in a window. Reading takes up to a second: it happens on
/// a thread of its own, so that the main window goes on meanwhile. The end of this object waits for it. GUI
/// thread only.
class BarcodeScan : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed for the life of this object.
    BarcodeScan(CaptureDesk& desk, MirvakCamera& camera);
    ~BarcodeScan() override;

    /// Behind the barcode button. Waits at most 10 seconds for the frame, saves it as a capture without
    /// colour processing and has its codes read. While one is being read, further clicks do nothing.
    void scan();
    bool isReading() const { return isReading_; }
    /// The window; null until codes were read for the first time.
    const BarCode* window() const { return window_.get(); }

private:
    bool startReading();
    FrameHandle capture();
    QString read(void* frame) const;
    void show(const QString& text);

    CaptureDesk& desk_;
    MirvakCamera& camera_;
    std::unique_ptr<BarCode> window_;
    bool isReading_ = false;
    Workers workers_; ///< last: its end waits for what uses the rest
};

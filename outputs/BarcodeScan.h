#pragma once

#include "FrameHandle.h"
#include "Workers.h"

#include <QObject>

#include <memory>

class BarCode;
class CaptureDesk;
class Job;
class MirvakCamera;

/// One capture, and the contents of all codes on it in a window. Reading takes up to a second: it happens on
/// a thread of its own, so that the main window goes on meanwhile, and can be cancelled; the end of this
/// object does so. GUI thread only.
class BarcodeScan : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed for the life of this object.
    BarcodeScan(CaptureDesk& desk, MirvakCamera& camera);
    ~BarcodeScan() override;

    /// Behind the barcode button. Waits at most 10 seconds for the frame, saves it as a capture without
    /// colour processing and has its codes read. While one is being read, further clicks only say so.
    void scan();
    bool isReading() const { return isReading_; }
    /// The window; null until codes were read for the first time.
    const BarCode* window() const { return window_.get(); }

private:
    bool startReading();
    FrameHandle capture();
    QString read(void* frame, Job& job) const;
    void show(const QString& text);

    CaptureDesk& desk_;
    MirvakCamera& camera_;
    std::unique_ptr<BarCode> window_;
    bool isReading_ = false;
    std::shared_ptr<Job> job_; ///< of the reading, once its frame has come
    Workers workers_;          ///< last: its end waits for what uses the rest
};

#pragma once

#include "Camera.h"
#include "mirvakcamera.h"

#include <QObject>
#include <QSize>
#include <QStringList>

#include <atomic>
#include <mutex>

/// The cameras of the machine and the one that is open. GUI thread only, except where noted. Knows no widget.
class CameraSession : public QObject
{
    Q_OBJECT

public:
    /// The values are part of the interface: -4 blocks every capture.
    enum State { Closed = 0, Streaming = 1, Lost = -4 };
    enum class OpenResult { Ok, CreateFailed, StartFailed };

    /// `callback` gets every frame on the capture thread, with `context`. `camera` is borrowed.
    CameraSession(MirvakCamera& camera,
                  MirvakFrameCallback callback,
                  void* context,
                  QObject* parent = nullptr);
    ~CameraSession() override;

    /// Looks for cameras, while none is open, and from now on notices those that come and go.
    /// @return their number, or -1 when the device layer does not start
    int discover();
    const Cameras& cameras() const { return cameras_; }
    /// A camera that is no main document camera is there.
    bool hasSecondCamera() const;

    /// Closes the open device and creates this one; the stream does not run yet.
    OpenResult select(const QString& identity);
    /// "width*height" of the selected device, in the order of the resolution indices.
    QStringList resolutions() const;
    /// Starts the stream of the selected device, which is created again when it was closed. When that fails
    /// it is closed: nobody may wait for its frames.
    OpenResult start(int resolutionIndex, const QString& resolutionText);
    /// Stops the stream and releases the device. Returns after the last frame.
    void closeCamera();
    /// Gives every device up; for the end of the program.
    void shutDown();

    /// 0 for success, else the library's result. `subtype` 1 is the raw stream, others the compressed one.
    int
    openCamera(void* device, int subtype, int resolutionIndex, int frameMode, MirvakFrameCallback callback);

    bool isOpen() const { return device_ != nullptr; }
    void* device() const { return device_; } ///< null while closed; stays the session's
    State state() const { return state_; }   ///< thread-safe
    /// The selected camera, open or not; its type is that of the present list.
    const Camera& current() const { return current_; }
    /// Why select() or start() failed, as the library says.
    MirvakResult failure() const { return failure_; }
    QSize size() const { return size_; } ///< pixels, as the chosen resolution text says

    /// Scan size chosen in the settings: 0 automatic, 1 A4, 2 A3. Only one model can change it.
    void setScanSize(int choice);
    /// Capture thread: measures the paper while the automatic choice is on.
    void checkPaperSize(void* image);
    bool checksPaperSize() const { return checkPaperSize_; }

    /// Capture thread: the stream has ended by itself.
    void noteStreamEnded();

Q_SIGNALS:
    /// Cameras have come, gone or become accessible: cameras() is up to date. The open one stays open.
    void camerasChanged();
    /// This camera is about to be created: whoever else uses it lets it go now.
    void opening(const QString& identity);
    /// The stream of the selected camera runs.
    void started();
    /// The open device is about to be closed: nobody may use it from now on.
    void closing();
    /// The open device is gone; it has been closed.
    void deviceLost();

private:
    void list();
    void logCount() const;
    void refresh();
    bool create(const QString& identity);
    void setStoredSize();
    bool isSizable() const;
    void handleLoss();
    int format() const;

    MirvakCamera& camera_;
    MirvakFrameCallback callback_;
    void* context_;
    std::mutex cameraMutex_; // serialises device and resolution changes
    Cameras cameras_;
    Camera current_;
    MirvakResult failure_ = MIRVAK_OK;
    bool initialised_ = false;
    void* device_ = nullptr;
    QSize size_;
    std::atomic<State> state_{Closed};
    unsigned streamNumber_ = 0;              // tells a late message of an old stream from one of this stream
    std::atomic<unsigned> runningStream_{0}; // the same, for the capture thread
    std::atomic<bool> checkPaperSize_{false};
    std::atomic<void*> sizedDevice_{nullptr}; // the device whose paper size the capture thread may set
};

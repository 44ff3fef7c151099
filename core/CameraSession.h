#pragma once

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

    /// Looks for cameras, also again after some came or went, while none is open.
    /// @return their number, or -1 when the device layer does not start
    int discover();
    const QStringList& deviceNames() const { return names_; }
    /// The first main document camera, or -1.
    int defaultDevice() const { return defaultDevice_; }
    /// A camera that is no main document camera is there.
    bool hasSecondCamera() const { return hasSecondCamera_; }
    bool isMainCamera(int index) const { return camera_.MirvakDevice_GetCameraType(index) == 1; }

    /// The device with this USB id, or -1.
    int indexOf(const QString& usbId) const;

    /// Closes the open device and creates this one; the stream does not run yet.
    OpenResult select(int index);
    /// "width*height" of the selected device, in the order of the resolution indices.
    QStringList resolutions() const;
    /// Starts the stream of the selected device, which is created again when it was closed.
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
    int currentIndex() const { return index_; }
    QString currentUsbId() const;
    QSize size() const { return size_; } ///< pixels, as the chosen resolution text says

    /// Scan size chosen in the settings: 0 automatic, 1 A4, 2 A3. Only one model can change it.
    void setScanSize(int choice);
    /// Capture thread: measures the paper while the automatic choice is on.
    void checkPaperSize(void* image);
    bool checksPaperSize() const { return checkPaperSize_; }

    /// Capture thread: the stream has ended by itself.
    void noteStreamEnded();

Q_SIGNALS:
    /// The open device is gone; it has been closed.
    void deviceLost();

private:
    bool create(int index);
    void handleLoss();
    int format() const;

    MirvakCamera& camera_;
    MirvakFrameCallback callback_;
    void* context_;
    std::mutex cameraMutex_; // serialises device and resolution changes
    QStringList names_;
    int count_ = -1;
    int defaultDevice_ = -1;
    bool hasSecondCamera_ = false;
    bool initialised_ = false;
    void* device_ = nullptr;
    int index_ = -1;
    QSize size_;
    std::atomic<State> state_{Closed};
    unsigned streamNumber_ = 0;              // tells a late message of an old stream from one of this stream
    std::atomic<unsigned> runningStream_{0}; // the same, for the capture thread
    std::atomic<bool> checkPaperSize_{false};
    std::atomic<void*> sizedDevice_{nullptr}; // the device whose paper size the capture thread may set
};

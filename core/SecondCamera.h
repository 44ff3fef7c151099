#pragma once

#include "ImageChannel.h"
#include "mirvakcamera.h"

#include <QImage>
#include <QObject>

#include <atomic>
#include <functional>

/// The second camera beside the main one: its live picture and single frames of it. GUI thread only, except
/// where noted.
class SecondCamera : public QObject
{
    Q_OBJECT

public:
    enum class OpenResult { Ok, NoneFound, CreateFailed, StartFailed };
    /// Receives each frame as 24-bit RGB on the capture thread; a copy of the picture keeps its pixels.
    using Show = std::function<void(const QImage&)>;

    /// `callback` gets every frame on the capture thread, with `context`, and passes it to onFrame().
    /// `camera` is borrowed; whatever `show` touches outlives the open camera.
    SecondCamera(MirvakCamera& camera,
                 MirvakFrameCallback callback,
                 void* context,
                 Show show,
                 QObject* parent = nullptr);
    ~SecondCamera() override;

    /// Opens the first colour or infrared camera of the present list that is neither a main document camera
    /// nor the one called `mainIdentity`, and starts it. Only that one is tried; a list of one has none.
    OpenResult start(const QString& mainIdentity);
    /// Stops the stream and releases the device. Returns after the last frame.
    void stop();
    bool isOpen() const { return device_ != nullptr; }
    const QString& identity() const { return identity_; } ///< of the open one

    /// Capture thread. A null image says that the stream has ended by itself.
    void onFrame(void* image);

    ImageChannel& channel() { return channel_; }

Q_SIGNALS:
    /// The open device is gone; it has been closed.
    void lost();

private:
    int find(const QString& mainIdentity) const;
    void noteStreamEnded();

    MirvakCamera& camera_;
    MirvakFrameCallback callback_;
    void* context_;
    Show show_;
    ImageChannel channel_;
    void* device_ = nullptr;
    QString identity_;
    std::atomic<unsigned> streamNumber_{0}; // tells a late message of an old stream from one of this stream
};

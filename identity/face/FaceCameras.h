#pragma once

#include "FaceFrames.h"
#include "mirvakcamera.h"

#include <QObject>

#include <array>
#include <atomic>

/// The two cameras that look at a person, open or not. GUI thread only, except where noted.
class FaceCameras : public QObject
{
    Q_OBJECT

public:
    static constexpr int format = 2; ///< the compressed stream
    enum class Result { Ok, NoneFound, Failed };

    /// Each callback gets the frames of its camera on a thread of its own, with `context`, and passes them to
    /// onFrame(). `camera` is borrowed; whatever `show` touches outlives the open cameras.
    FaceCameras(MirvakCamera& camera,
                MirvakFrameCallback colour,
                MirvakFrameCallback infrared,
                void* context,
                FaceFrames::Show show);
    ~FaceCameras() override { close(); }

    /// Opens and starts the cameras of the present list. Ok when at least one runs.
    Result open();
    /// Stops and releases both. Returns after the last frame.
    void close();
    bool isOpen(FaceRole role) const { return lenses_[size_t(role)].device != nullptr; }
    /// Whether pictures for this role come: the colour camera gives those of an infrared one that is not
    /// there.
    bool canServe(FaceRole role) const { return isOpen(role) || isOpen(FaceRole::colour); }

    /// Camera thread. A null image says that the stream has ended by itself.
    void onFrame(FaceRole role, void* image);
    FaceFrames& frames() { return frames_; }

Q_SIGNALS:
    /// A camera is gone; it has been closed.
    void lost();

private:
    struct Lens
    {
        MirvakFrameCallback callback;
        void* device = nullptr;
        std::atomic<unsigned> streamNumber{0}; ///< tells a late message of an old stream from one of this
    };

    bool start(FaceRole role, int index);
    void stop(FaceRole role);
    void noteEnd(FaceRole role);

    MirvakCamera& camera_;
    void* context_;
    FaceFrames frames_;
    std::array<Lens, 2> lenses_; // last: their frames go into the others
};

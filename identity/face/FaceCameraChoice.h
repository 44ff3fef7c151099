#pragma once

class MirvakCamera;

/// Which cameras look at people, and in which size. GUI thread only.
namespace faceCameraChoice {

struct Found
{
    int colour = -1;   ///< index in the present list; -1: none
    int infrared = -1; ///< the same
    bool isAny() const { return colour >= 0 || infrared >= 0; }
};

/// The last colour camera that is no document camera, and the last infrared one. Where there is no colour
/// camera the infrared one takes its place too.
Found find(MirvakCamera& camera);

/// The index of the first resolution that has the pixels of 640 x 480; else the last one, or the one before
/// it where the last has fewer. -1 for a device without any.
int resolution(MirvakCamera& camera, void* device);

} // namespace faceCameraChoice

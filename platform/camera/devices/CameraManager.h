#pragma once

#include "CameraBackend.h"
#include "CameraTypes.h"
#include "ImagePool.h"
#include "OpenCamera.h"

#include <mutex>

namespace mirvak {

/// The list of cameras and the open ones among them. Everything is called by one thread, except find(), which
/// is thread-safe.
class CameraManager
{
public:
    using Backends = std::vector<std::unique_ptr<CameraBackend>>;

    /// The pool is borrowed and must outlive the manager.
    explicit CameraManager(ImagePool& pool) : pool_(pool) {}
    ~CameraManager() { clear(); }

    /// Asks the back ends in their order and keeps the list until the next time. MIRVAK_BUSY while a camera
    /// is open.
    MirvakResult init(Backends backends, const TypeOverrides& overrides);
    /// Stops and closes every camera and forgets the list.
    void clear();

    int count() const { return static_cast<int>(cameras_.size()); }
    /// Null outside the list.
    const CameraInfo* info(int index) const;
    /// Null when the camera cannot be opened.
    OpenCamera* open(int index);
    /// Null for a handle that is not open. The caller's pointer keeps the camera alive.
    std::shared_ptr<OpenCamera> find(const void* handle) const;
    /// Stops and closes one camera.
    MirvakResult close(const void* handle);

private:
    ImagePool& pool_;
    Backends backends_;
    std::vector<CameraInfo> cameras_;
    std::vector<size_t> backendOf_; // per camera
    mutable std::mutex openMutex_;
    std::vector<std::shared_ptr<OpenCamera>> open_;
};

} // namespace mirvak

#pragma once

#include "CameraSearch.h"
#include "ImagePool.h"
#include "OpenCamera.h"

#include <mutex>

namespace mirvak {

/// The list of cameras and the open ones among them. Everything is called by one thread, except find(), which
/// is thread-safe.
class CameraManager
{
public:
    /// The pool is borrowed and must outlive the manager.
    explicit CameraManager(ImagePool& pool) : pool_(pool) {}
    ~CameraManager() { clear(); }

    /// Asks the back ends in their order and keeps the list until the next time. MIRVAK_BUSY while a camera
    /// is open.
    MirvakResult init(Backends backends, TypeOverrides overrides);
    /// Lists anew; open cameras are left alone. MIRVAK_NO_DEVICE before init().
    MirvakResult refresh();
    /// `changed` is called on a thread of its own when refresh() would give another list; null ends that.
    /// Outlasts init(), ends with clear(). MIRVAK_NO_DEVICE before init().
    MirvakResult watch(std::function<void()> changed);
    /// Stops and closes every camera and forgets the list.
    void clear();

    int count() const { return static_cast<int>(cameras_.size()); }
    /// Null outside the list.
    const CameraInfo* info(int index) const;
    /// Null when the camera cannot be opened; openResult() then says why.
    OpenCamera* open(int index);
    MirvakResult openResult() const { return openResult_; }
    /// Null for a handle that is not open. The caller's pointer keeps the camera alive.
    std::shared_ptr<OpenCamera> find(const void* handle) const;
    /// Stops and closes one camera.
    MirvakResult close(const void* handle);

private:
    bool isAnyOpen() const;

    ImagePool& pool_;
    FoundCameras cameras_;
    MirvakResult openResult_ = MIRVAK_OK;
    mutable std::mutex openMutex_;
    std::vector<std::shared_ptr<OpenCamera>> open_;
    std::function<void()> changed_;
    std::unique_ptr<CameraSearch> search_; // last: its thread calls changed_
};

} // namespace mirvak

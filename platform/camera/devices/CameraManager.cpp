#include "CameraManager.h"

#include <algorithm>

namespace mirvak {

bool CameraManager::isAnyOpen() const
{
    const std::lock_guard lock(openMutex_);
    return !open_.empty();
}

MirvakResult CameraManager::init(Backends backends, TypeOverrides overrides)
{
    if (isAnyOpen())
        return MIRVAK_BUSY;
    search_ = std::make_unique<CameraSearch>(std::move(backends), std::move(overrides));
    cameras_ = search_->look();
    search_->watch(changed_);
    return MIRVAK_OK;
}

MirvakResult CameraManager::refresh()
{
    if (!search_)
        return MIRVAK_NO_DEVICE;
    cameras_ = search_->look();
    return MIRVAK_OK;
}

MirvakResult CameraManager::watch(std::function<void()> changed)
{
    if (!search_)
        return MIRVAK_NO_DEVICE;
    changed_ = std::move(changed);
    search_->watch(changed_);
    return MIRVAK_OK;
}

void CameraManager::clear()
{
    std::vector<std::shared_ptr<OpenCamera>> closing;
    {
        const std::lock_guard lock(openMutex_);
        closing.swap(open_);
    }
    for (const std::shared_ptr<OpenCamera>& camera : closing)
        camera->stop();
    closing.clear();
    search_.reset();
    changed_ = nullptr;
    cameras_.clear();
}

const CameraInfo* CameraManager::info(int index) const
{
    return index >= 0 && index < count() ? &cameras_[static_cast<size_t>(index)].info : nullptr;
}

OpenCamera* CameraManager::open(int index)
{
    openResult_ = MIRVAK_BAD_ARGUMENT;
    if (!info(index))
        return nullptr;
    const FoundCamera& camera = cameras_[static_cast<size_t>(index)];
    openResult_ = MIRVAK_NO_DEVICE;
    auto device = camera.backend->open(camera.info, openResult_);
    if (!device)
        return nullptr;
    openResult_ = MIRVAK_OK;
    auto opened = std::make_shared<OpenCamera>(std::move(device), pool_);
    const std::lock_guard lock(openMutex_);
    open_.push_back(opened);
    return opened.get();
}

std::shared_ptr<OpenCamera> CameraManager::find(const void* handle) const
{
    const std::lock_guard lock(openMutex_);
    const auto found =
        std::find_if(open_.begin(), open_.end(), [&](const auto& camera) { return camera.get() == handle; });
    return found != open_.end() ? *found : nullptr;
}

MirvakResult CameraManager::close(const void* handle)
{
    const std::shared_ptr<OpenCamera> camera = find(handle);
    if (!camera)
        return MIRVAK_BAD_HANDLE;
    // Without the mutex: the callback that is being waited for may look up its own camera.
    const MirvakResult stopped = camera->stop();
    if (stopped != MIRVAK_OK)
        return stopped;
    const std::lock_guard lock(openMutex_);
    open_.erase(std::find(open_.begin(), open_.end(), camera));
    return MIRVAK_OK;
}

} // namespace mirvak

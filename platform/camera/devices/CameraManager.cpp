#include "CameraManager.h"

#include <algorithm>

namespace mirvak {

MirvakResult CameraManager::init(Backends backends, const TypeOverrides& overrides)
{
    {
        const std::lock_guard lock(openMutex_);
        if (!open_.empty())
            return MIRVAK_BUSY;
    }
    clear();
    backends_ = std::move(backends);
    for (size_t i = 0; i < backends_.size(); ++i) {
        for (CameraInfo& camera : backends_[i]->enumerate()) {
            cameras_.push_back(std::move(camera));
            backendOf_.push_back(i);
        }
    }
    assignTypes(cameras_, overrides);
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
    cameras_.clear();
    backendOf_.clear();
    backends_.clear();
}

const CameraInfo* CameraManager::info(int index) const
{
    return index >= 0 && index < count() ? &cameras_[static_cast<size_t>(index)] : nullptr;
}

OpenCamera* CameraManager::open(int index)
{
    const CameraInfo* const camera = info(index);
    if (!camera)
        return nullptr;
    auto device = backends_[backendOf_[static_cast<size_t>(index)]]->open(*camera);
    if (!device)
        return nullptr;
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

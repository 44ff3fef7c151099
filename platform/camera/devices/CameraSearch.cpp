#include "CameraSearch.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <pthread.h>

namespace mirvak {
namespace {

constexpr std::chrono::milliseconds interval{500};

bool areSame(const FoundCameras& a, const FoundCameras& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.info == y.info;
    });
}

} // namespace

CameraSearch::CameraSearch(Backends backends, TypeOverrides overrides)
    : backends_(std::move(backends)), overrides_(std::move(overrides))
{
}

CameraSearch::~CameraSearch()
{
    watch(nullptr);
}

FoundCameras CameraSearch::look()
{
    if (const std::unique_lock asking(asking_, std::try_to_lock); asking) {
        FoundCameras now = ask();
        const std::lock_guard lock(foundMutex_);
        found_ = std::move(now);
    }
    const std::lock_guard lock(foundMutex_);
    return found_;
}

FoundCameras CameraSearch::ask()
{
    std::vector<CameraInfo> infos;
    FoundCameras cameras;
    for (const auto& backend : backends_) {
        for (CameraInfo& info : backend->enumerate()) {
            infos.push_back(std::move(info));
            cameras.push_back({{}, backend});
        }
    }
    assignTypes(infos, overrides_);
    for (size_t i = 0; i < infos.size(); ++i)
        cameras[i].info = std::move(infos[i]);
    return cameras;
}

void CameraSearch::watch(std::function<void()> changed)
{
    if (thread_.joinable()) {
        stop_.signal();
        thread_.join();
        stop_.clear();
    }
    changed_ = std::move(changed);
    if (changed_)
        thread_ = std::thread(&CameraSearch::run, this);
}

void CameraSearch::run()
{
    pthread_setname_np(pthread_self(), "camera watch");
    while (!stop_.waitUntil(WakeEvent::Clock::now() + interval)) {
        try {
            bool isNew = false;
            {
                const std::lock_guard asking(asking_);
                FoundCameras now = ask();
                const std::lock_guard lock(foundMutex_);
                isNew = !areSame(now, found_);
                found_ = std::move(now);
            }
            if (isNew)
                changed_();
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "looking for cameras: %s\n", failure.what());
        }
    }
}

} // namespace mirvak

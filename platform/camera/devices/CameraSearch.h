#pragma once

#include "CameraBackend.h"
#include "CameraTypes.h"
#include "WakeEvent.h"

#include <functional>
#include <mutex>
#include <thread>

namespace mirvak {

using Backends = std::vector<std::shared_ptr<CameraBackend>>;

/// A camera and whom to ask for it.
struct FoundCamera
{
    CameraInfo info;
    std::shared_ptr<CameraBackend> backend;
};
using FoundCameras = std::vector<FoundCamera>;

/// Looks for cameras, on request and, as a watch, by itself. Thread-safe, except watch().
class CameraSearch
{
public:
    /// The back ends are asked in their order.
    CameraSearch(Backends backends, TypeOverrides overrides);
    ~CameraSearch();

    /// What is there now. While the watch is looking, what was there when it began: a camera that takes its
    /// time to answer must not hold the caller up, and the watch will tell.
    FoundCameras look();

    /// `changed` is called on a thread of its own when there is something other than what look() last gave;
    /// null ends that. Returns after the last call for the one before.
    void watch(std::function<void()> changed);

private:
    FoundCameras ask();
    void run();

    const Backends backends_;
    const TypeOverrides overrides_;
    std::mutex asking_;
    std::mutex foundMutex_;
    FoundCameras found_;
    WakeEvent stop_;
    std::function<void()> changed_;
    std::thread thread_; // last: it uses everything above
};

} // namespace mirvak

#include "ControlLink.h"

#include <algorithm>
#include <cstdio>
#include <system_error>

const MirvakControlInfo* findControl(const ControlList& controls, int control)
{
    const auto found = std::find_if(
        controls.begin(), controls.end(), [control](const auto& info) { return info.control == control; });
    return found != controls.end() ? &*found : nullptr;
}

ControlLink::ControlLink(MirvakCamera& camera, std::function<void(const ControlReport&)> tell)
    : camera_(camera), tell_(std::move(tell))
{
}

ControlLink::~ControlLink()
{
    connectTo(nullptr);
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_.notify_one();
    if (thread_.joinable())
        thread_.join();
}

unsigned ControlLink::connectTo(void* device)
{
    const unsigned connection = ++connection_; // from here on no further call begins
    const std::lock_guard calls(deviceMutex_);
    const std::lock_guard lock(mutex_);
    waiting_.clear();
    device_ = device;
    return connection;
}

unsigned ControlLink::ask()
{
    return post({Request::Ask});
}

unsigned ControlLink::set(int control, int value)
{
    return post({Request::Set, control, value});
}

unsigned ControlLink::focusAt(double x, double y)
{
    return post({Request::Focus, 0, 0, x, y});
}

unsigned ControlLink::resetAll()
{
    return post({Request::Reset});
}

unsigned ControlLink::post(const Request& request)
{
    const std::lock_guard lock(mutex_);
    const auto isSame = [&](const Request& other) {
        return request.kind == other.kind && request.kind != Request::Focus &&
               request.control == other.control;
    };
    waiting_.erase(std::remove_if(waiting_.begin(), waiting_.end(), isSame), waiting_.end());
    waiting_.push_back(request);
    if (!thread_.joinable()) {
        try {
            thread_ = std::thread(&ControlLink::run, this);
        } catch (const std::system_error& failure) {
            std::fprintf(stderr, "camera controls: no thread (%s)\n", failure.what());
        }
    }
    wake_.notify_one();
    return ++newest_;
}

void ControlLink::run()
{
    std::unique_lock lock(mutex_);
    while (true) {
        wake_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
        if (ending_)
            return;
        std::vector<Request> requests;
        requests.swap(waiting_);
        ControlReport report;
        report.connection = connection_;
        report.request = newest_;
        lock.unlock();
        for (const Request& request : requests)
            serve(request, report.connection);
        // First the state: a search that ends meanwhile is told of with the next report. The other way round,
        // the lens might be reported as found where the search was still trying.
        report.focusState = call(report.connection,
                                 [this](void* device) { return camera_.MirvakDevice_GetFocusState(device); });
        report.controls = read(report.connection);
        tell_(report);
        lock.lock();
    }
}

/// Under the mutex, so that the device is not closed, and its handle given to another one, meanwhile.
int ControlLink::call(unsigned connection, const std::function<int(void* device)>& what)
{
    if (connection != connection_)
        return MIRVAK_BAD_HANDLE;
    const std::lock_guard calls(deviceMutex_);
    return device_ && connection == connection_ ? what(device_) : int(MIRVAK_BAD_HANDLE);
}

void ControlLink::serve(const Request& request, unsigned connection)
{
    switch (request.kind) {
    case Request::Ask:
        break;
    case Request::Set:
        call(connection, [&](void* device) {
            return camera_.MirvakDevice_SetControl(device, request.control, request.value);
        });
        break;
    case Request::Focus:
        call(connection,
             [&](void* device) { return camera_.MirvakDevice_FocusAt(device, request.x, request.y); });
        break;
    case Request::Reset:
        reset(connection);
        break;
    }
}

/// Values first, as most automatics are on when delivered and would hold them; then once more those that only
/// the switches have set free.
void ControlLink::reset(unsigned connection)
{
    resetOf(connection, false);
    resetOf(connection, true);
    resetOf(connection, false);
}

void ControlLink::resetOf(unsigned connection, bool switches)
{
    for (const MirvakControlInfo& info : read(connection)) {
        const bool isSwitch = info.kind == MIRVAK_SWITCH;
        if (isSwitch != switches || info.isHeld)
            continue;
        call(connection, [&](void* device) {
            return camera_.MirvakDevice_SetControl(device, info.control, info.standard);
        });
    }
}

ControlList ControlLink::read(unsigned connection)
{
    ControlList controls;
    const int count =
        call(connection, [this](void* device) { return camera_.MirvakDevice_GetControlCount(device); });
    for (int i = 0; i < count; ++i) {
        MirvakControlInfo info{};
        const int result =
            call(connection, [&](void* device) { return camera_.MirvakDevice_GetControl(device, i, info); });
        if (result == MIRVAK_OK)
            controls << info;
    }
    return controls;
}

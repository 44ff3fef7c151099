#pragma once

#include "mirvakcamera.h"

#include <QVector>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

using ControlList = QVector<MirvakControlInfo>;

/// Null when it is not in the list.
const MirvakControlInfo* findControl(const ControlList& controls, int control);

/// How things stand at the camera after some requests.
struct ControlReport
{
    unsigned connection = 0; ///< what connectTo() answered
    unsigned request = 0;    ///< number of the newest request that is done
    ControlList controls;
    int focusState = MIRVAK_OK; ///< as MirvakDevice_GetFocusState
};

/// Talks to the controls of a camera on a thread of its own, because a camera may take its time to answer.
/// What is asked for faster than the camera follows is summed up: of several values of one control the last.
/// All calls come from one thread.
class ControlLink
{
public:
    /// `tell` gets a report after each round, on the link's thread. `camera` is borrowed.
    ControlLink(MirvakCamera& camera, std::function<void(const ControlReport&)> tell);
    ~ControlLink();
    ControlLink(const ControlLink&) = delete;
    ControlLink& operator=(const ControlLink&) = delete;

    /// Forgets what was asked for; null for no device. When it returns, the device before is no longer
    /// used: at most one answer of it is waited for. @return the number of this connection
    unsigned connectTo(void* device);

    /// Each answers with the request's number.
    unsigned ask();
    unsigned set(int control, int value);
    unsigned focusAt(double x, double y);
    /// All that can be set as delivered, the automatics too.
    unsigned resetAll();

private:
    struct Request
    {
        enum Kind { Ask, Set, Focus, Reset } kind;
        int control = 0, value = 0;
        double x = 0, y = 0;
    };

    unsigned post(const Request& request);
    void run();
    void serve(const Request& request, unsigned connection);
    void reset(unsigned connection);
    void resetOf(unsigned connection, bool switches);
    ControlList read(unsigned connection);
    int call(unsigned connection, const std::function<int(void* device)>& what);

    MirvakCamera& camera_;
    const std::function<void(const ControlReport&)> tell_;
    std::mutex deviceMutex_; // held during a call to the camera
    void* device_ = nullptr;
    std::atomic<unsigned> connection_{0};
    std::mutex mutex_; // guards what follows
    std::condition_variable wake_;
    std::vector<Request> waiting_;
    unsigned newest_ = 0;
    bool ending_ = false;
    std::thread thread_; // from the first request on
};

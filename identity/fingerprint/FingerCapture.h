#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Polls opened sensors, each on a detached thread of its own, and stores what they deliver. A thread holds
/// all that it uses, so it never outlives its data; what it has to say waits here until it is fetched. The
/// capture calls belong on one thread.
class FingerCapture
{
public:
    struct News
    {
        enum Kind {
            saved,    ///< the picture stands under its path
            timeout,  ///< no finger came
            lost,     ///< the sensor does not answer any more
            notSaved, ///< there was a finger, but no file came of it
        };
        Kind kind;
        std::string path; ///< UTF-8
    };

    /// `wake` is called on a worker when there is news, and never after the end of this object.
    explicit FingerCapture(std::function<void()> wake);
    /// Ends every polling. Waits for the workers, so that the sensor is free, but for a second at most: one
    /// that hangs in a driver goes on alone.
    ~FingerCapture();
    FingerCapture(const FingerCapture&) = delete;
    FingerCapture& operator=(const FingerCapture&) = delete;

    /// Polls beside those that poll already; `handle` is closed at the end. A file of the name `path` is
    /// replaced.
    void start(int handle, unsigned address, const std::string& path);
    /// Ends every polling within one poll. Whose finger was seen already is stored.
    void stop();
    /// What has happened since the last call, in order.
    std::vector<News> takeNews();

private:
    struct State;
    class Worker;

    std::shared_ptr<State> state_;
};

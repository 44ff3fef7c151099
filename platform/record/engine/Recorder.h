#pragma once

#include "Film.h"
#include "Schedule.h"
#include "mirvakrecord.h"

#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>

namespace mirvak {

/// One recording: takes frames from the camera's thread, films them on a thread of its own. Thread-safe, but
/// for start and stop, which one thread calls, once each.
class Recorder
{
public:
    using Clock = std::function<std::chrono::nanoseconds()>;

    Recorder(const std::string& path,
             const VideoFormat& format,
             std::vector<EncoderChoice> choices,
             Clock clock = steadyClock);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Returns when encoder and file are ready; the film begins at that moment. Prints the encoder on
    /// standard output.
    MirvakRecordResult start();
    MirvakRecordResult write(const uint8_t* rgb, size_t bytes);
    /// Returns when the file is closed. NO_FRAME: there is no file.
    MirvakRecordResult stop();

    RecordCounts counts() const;
    int refused() const;                         ///< frames of a wrong size
    MirvakRecordResult result() const;           ///< what has ended the recording by itself, or OK
    bool plays() const { return film_.plays(); } ///< after stop()
    const std::string& encoderName() const { return film_.encoderName(); } ///< after stop()

    static std::chrono::nanoseconds steadyClock();

private:
    enum class State { idle, running, closing, ended };

    void run(std::promise<MirvakRecordResult> opened);
    bool open(std::promise<MirvakRecordResult>& opened);
    void film();
    void touchBuffers();
    bool filmNext();
    bool show(Schedule::Step& step);
    void end(MirvakRecordResult result, const std::string& why);
    MirvakRecordResult filmResult() const;
    std::chrono::nanoseconds now() const { return clock_() - begin_; }

    const VideoFormat format_;
    const Clock clock_;
    Film film_; ///< of the thread while it runs

    mutable std::mutex mutex_; ///< of everything below
    std::condition_variable wake_;
    Schedule schedule_;
    State state_ = State::idle;
    std::chrono::nanoseconds begin_{0};
    MirvakRecordResult result_ = MIRVAK_RECORD_OK;
    int refused_ = 0;

    std::mutex writing_; ///< one write at a time, so that frames keep their order
    std::thread thread_;
};

} // namespace mirvak

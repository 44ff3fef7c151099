#pragma once

#include "Film.h"
#include "Schedule.h"
#include "mirvakrecord.h"

#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>

namespace mirvak {

/// One recording: takes frames from the camera's thread, films them on a thread of its own. Thread-safe, but
/// for start and stop, which one thread calls, once each. Owned by a shared pointer, of which its thread
/// holds a copy: a disk that does not answer keeps the thread and nobody else. A recording that was started
/// must be stopped.
class Recorder : public std::enable_shared_from_this<Recorder>
{
public:
    using Clock = std::function<std::chrono::nanoseconds()>;

    Recorder(const std::string& path,
             const VideoFormat& format,
             std::vector<EncoderChoice> choices,
             Clock clock = steadyClock);
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Returns when encoder and file are ready; the film begins at that moment. Prints the encoder on
    /// standard output.
    MirvakRecordResult start();
    /// A frame of another size than the film's is fitted into it. WRONG_SIZE: `bytes` are not those of such a
    /// frame.
    MirvakRecordResult write(const uint8_t* rgb, size_t bytes, int width, int height);
    MirvakRecordResult write(const uint8_t* rgb, size_t bytes)
    {
        return write(rgb, bytes, format_.width, format_.height);
    }
    /// Returns when the file is closed, or when nothing has been encoded or written for so long: IO_ERROR,
    /// and isClosed() is false. NO_FRAME: there is no file.
    MirvakRecordResult stop(std::chrono::milliseconds patience = std::chrono::seconds(3));
    bool isClosed() const;

    RecordCounts counts() const;
    /// The film's time: what has been filmed, once the file is closed what it shows.
    std::chrono::milliseconds length() const;
    int refused() const;               ///< frames of a wrong size
    MirvakRecordResult result() const; ///< what has ended the recording by itself, or OK
    /// Once the file is closed; see Film.
    UniqueFd takeFile() { return film_.takeFile(); }
    const std::string& encoderName() const { return film_.encoderName(); }

    static std::chrono::nanoseconds steadyClock();

private:
    enum class State { idle, running, closing, ended, closed };

    /// False when nothing has moved for so long. A busy machine is slow, but moves.
    bool awaitEnd(std::chrono::milliseconds patience) const;
    void run(std::promise<MirvakRecordResult> opened);
    bool open(std::promise<MirvakRecordResult>& opened);
    void film();
    void close();
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
    std::future<void> threadEnded_;
};

} // namespace mirvak

#include "RecordModule.h"

#include "PlainCopyThread.h"
#include "Recorder.h"

#include <cstdio>
#include <optional>

namespace {

using mirvak::RecordCounts;
using mirvak::Recorder;
using mirvak::UniqueFd;

// So long the window may stand still at the end of a recording.
constexpr std::chrono::milliseconds waitForPlainFile{300};

class FfmpegModule : public mirvak::RecordModule
{
public:
    ~FfmpegModule() override
    {
        if (recording())
            FfmpegModule::stop();
    }

    MirvakRecordResult start(const std::string& path, int width, int height, int framesPerSecond) override
    {
        if (recording())
            return MIRVAK_RECORD_BUSY;
        const auto recorder = std::make_shared<Recorder>(
            path, mirvak::VideoFormat{width, height, framesPerSecond}, mirvak::encoderChoices(wasLate_));
        const MirvakRecordResult result = recorder->start();
        if (result != MIRVAK_RECORD_OK)
            return result;
        path_ = path;
        const std::lock_guard lock(mutex_);
        recorder_ = recorder;
        return MIRVAK_RECORD_OK;
    }

    MirvakRecordResult write(const uint8_t* rgb, size_t bytes) override
    {
        const std::shared_ptr<Recorder> recorder = recording();
        return recorder ? recorder->write(rgb, bytes) : MIRVAK_RECORD_NOT_RECORDING;
    }

    MirvakRecordResult write(const uint8_t* rgb, size_t bytes, int width, int height) override
    {
        const std::shared_ptr<Recorder> recorder = recording();
        return recorder ? recorder->write(rgb, bytes, width, height) : MIRVAK_RECORD_NOT_RECORDING;
    }

    MirvakRecordResult stop() override
    {
        const std::shared_ptr<Recorder> recorder = recording();
        if (!recorder)
            return MIRVAK_RECORD_NOT_RECORDING;
        const MirvakRecordResult result = recorder->stop();
        {
            const std::lock_guard lock(mutex_);
            last_ = Last{recorder->counts(),
                         recorder->length(),
                         result == MIRVAK_RECORD_NO_FRAME ? MIRVAK_RECORD_OK : result};
            recorder_ = nullptr; // its buffers are large
        }
        if (!recorder->isClosed()) {
            copies_.losePatience();
            return result;
        }
        report(*recorder);
        UniqueFd film = recorder->takeFile();
        if (film.isValid() && result != MIRVAK_RECORD_IO_ERROR) // that has been reported, and lasts
            copies_.start(path_, std::move(film), waitForPlainFile);
        return result;
    }

    MirvakRecordResult counts(RecordCounts& counts) const override
    {
        const std::lock_guard lock(mutex_);
        if (!recorder_ && !last_)
            return MIRVAK_RECORD_NOT_RECORDING;
        counts = recorder_ ? recorder_->counts() : last_->counts;
        return recorder_ ? recorder_->result() : last_->result;
    }

    MirvakRecordResult length(std::chrono::milliseconds& length) const override
    {
        const std::lock_guard lock(mutex_);
        if (!recorder_ && !last_)
            return MIRVAK_RECORD_NOT_RECORDING;
        length = recorder_ ? recorder_->length() : last_->length;
        return recorder_ ? recorder_->result() : last_->result;
    }

    int copyPercent() const override { return copies_.percent(); }
    void stopCopying() override { copies_.cancel(); }

private:
    std::shared_ptr<Recorder> recording() const
    {
        const std::lock_guard lock(mutex_);
        return recorder_;
    }

    void report(const Recorder& recorder)
    {
        const RecordCounts counts = recorder.counts();
        std::printf("record: %d frames, %d repeated, %d dropped, %d refused, %s\n",
                    counts.written,
                    counts.repeated,
                    counts.dropped,
                    recorder.refused(),
                    recorder.encoderName().c_str());
        std::fflush(stdout);
        wasLate_ = wasLate_ || counts.dropped * 100 > counts.written; // a machine does not grow faster
    }

    struct Last
    {
        RecordCounts counts;
        std::chrono::milliseconds length;
        MirvakRecordResult result;
    };

    mutable std::mutex mutex_; ///< of the two below
    std::shared_ptr<Recorder> recorder_;
    std::optional<Last> last_; ///< recording that has ended
    bool wasLate_ = false; ///< more than one frame in a hundred was dropped: from then on the cheap setting
    std::string path_;
    mirvak::PlainCopyThread copies_;
};

} // namespace

extern "C" __attribute__((visibility("default"))) mirvak::RecordModule* makeRecordModule()
{
    return new FfmpegModule;
}

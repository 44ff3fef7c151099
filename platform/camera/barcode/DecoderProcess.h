#pragma once

#include "UniqueFd.h"
#include "helper/Messages.h"

#include <opencv2/core.hpp>

#include <string>
#include <sys/types.h>

namespace mirvak {

/// One running helper program that decodes pictures. It may die at any time without harm: it is told by
/// News::died, and the next question starts a new one. The end of this object kills and reaps it. One thread
/// at a time.
class DecoderProcess
{
public:
    enum class News {
        none,    ///< nothing yet
        reading, ///< a code
        end,     ///< the picture is done
        died,    ///< the helper is gone; so is what it had not yet said
    };

    /// `program` is the helper's path; pictures have at most `pictureBytes` pixels.
    DecoderProcess(std::string program, std::size_t pictureBytes);
    ~DecoderProcess();
    DecoderProcess(const DecoderProcess&) = delete;
    DecoderProcess& operator=(const DecoderProcess&) = delete;

    /// Where the next picture is drawn: CV_8UC1, in memory shared with the helper; empty when it does not fit
    /// or there is no such memory. Valid until the next call.
    cv::Mat canvas(cv::Size size);
    /// Hands over what was drawn. Starts the helper if none runs; false when none can be started.
    bool ask(const helper::Request& request);
    /// Readable when there is news; -1 while no helper runs.
    int socket() const { return socket_.get(); }
    pid_t pid() const { return pid_; } ///< of the running helper; -1 while none runs
    /// Takes one piece of news without waiting. `bytes` are those of a reading.
    News receive(helper::Reading& reading, std::string& bytes);
    /// Kills the helper if one runs, and reaps it.
    void stop();

private:
    bool start();

    std::string program_;
    std::size_t pictureBytes_;
    UniqueFd memory_;
    cv::Mat mapped_; ///< one row over the shared memory
    UniqueFd socket_;
    pid_t pid_ = -1;
    std::string packet_;
};

} // namespace mirvak

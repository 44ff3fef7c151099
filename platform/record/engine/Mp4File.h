#pragma once

#include "AvHandles.h"

#include <string>
#include <vector>

namespace mirvak {

/// An MP4 file of one H.264 stream in fragments of one second: it plays up to its last complete fragment
/// whatever happens to the process. What is written after that fragment is cut off when writing fails.
class Mp4File
{
public:
    Mp4File() = default;
    ~Mp4File();
    Mp4File(const Mp4File&) = delete;
    Mp4File& operator=(const Mp4File&) = delete;

    /// Creates the file, or empties one of that name. `path` in UTF-8.
    bool open(const std::string& path);
    /// Packets in the order in which they are shown, with times in units of the encoder's time base. The
    /// packet is used up.
    bool write(AVPacket& packet, const AVCodecContext& encoder);
    /// Completes the file. Without a fragment that plays there is none afterwards.
    /// @return whether everything written is in it
    bool close();

    bool plays() const { return goodBytes_ > 0; }       ///< holds at least one fragment
    const std::string& error() const { return error_; } ///< of the first failure

private:
    static int writeBytes(void* file, uint8_t* data, int count);
    bool filter(AVPacket& packet, const AVCodecContext& encoder);
    bool makeFilter(const AVCodecContext& encoder);
    bool takeHeaders(AVPacket& packet);
    bool begin(const AVCodecContext& encoder);
    bool put(AVPacket& packet, AVRational timeBase);
    bool isInFolder() const;
    bool noteFragment(int result);
    bool fail(const std::string& why);
    bool fail(int error) { return fail(avText(error)); }
    void end();

    std::string path_;
    std::string error_;
    int fd_ = -1;
    int64_t bytes_ = 0;     ///< written so far
    int64_t goodBytes_ = 0; ///< of them up to the end of the last complete fragment
    AvFilterPtr filter_;    ///< takes the stream's headers out of the packets
    std::vector<uint8_t> headers_;
    AvCallbackIoPtr io_; // before the output, which uses it
    AvOutputPtr output_;
    bool begun_ = false;
};

} // namespace mirvak

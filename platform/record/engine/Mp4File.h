#pragma once

#include "AvHandles.h"
#include "UniqueFd.h"

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

    /// Creates the file; one of that name is not touched. `path` in UTF-8.
    bool open(const std::string& path);
    bool isNameTaken() const { return nameTaken_; } ///< why open() failed
    /// Packets in the order in which they are shown, with times in units of the encoder's time base. The
    /// packet is used up.
    bool write(AVPacket& packet, const AVCodecContext& encoder);
    /// Completes the file. Without a fragment that plays there is none afterwards.
    /// @return whether everything written is in it
    bool close();

    bool plays() const { return goodBytes_ > 0; } ///< holds at least one fragment
    int64_t slots() const { return goodSlots_; }  ///< of the film's time, up to the end of the last fragment
    const std::string& error() const { return error_; } ///< of the first failure
    /// After close(): the file that was written, whatever has become of its name. Not valid when it does not
    /// play.
    UniqueFd takeFile() { return std::move(written_); }

private:
    static int writeBytes(void* file, uint8_t* data, int count);
    bool filter(AVPacket& packet, const AVCodecContext& encoder);
    bool makeFilter(const AVCodecContext& encoder);
    bool takeHeaders(AVPacket& packet);
    bool begin(const AVCodecContext& encoder);
    bool put(AVPacket& packet, AVRational timeBase);
    bool isInFolder() const;
    bool isUnderItsName() const;
    bool noteFragment(int result, int64_t slots);
    bool fail(const std::string& why);
    bool fail(int error) { return fail(avText(error)); }
    void end();

    std::string path_;
    std::string error_;
    UniqueFd fd_;
    UniqueFd written_;
    bool nameTaken_ = false;
    int64_t bytes_ = 0;     ///< written so far
    int64_t goodBytes_ = 0; ///< of them up to the end of the last complete fragment
    int64_t goodSlots_ = 0;
    int64_t lastSlot_ = 0; ///< whose packet was put
    AvFilterPtr filter_;   ///< takes the stream's headers out of the packets
    std::vector<uint8_t> headers_;
    AvCallbackIoPtr io_; // before the output, which uses it
    AvOutputPtr output_;
    bool begun_ = false;
};

} // namespace mirvak

#pragma once

#include "Mp4File.h"
#include "VideoEncoder.h"

#include <atomic>

namespace mirvak {

/// The film of one recording: encoder and file. Knows no thread and no clock: the slots of the film's time
/// are passed in. One thread at a time.
class Film
{
public:
    Film(std::string path, const VideoFormat& format, std::vector<EncoderChoice> choices);

    /// False: no file of the film's is there.
    bool open();
    /// Shows these pixels from the slot on; false when the film has ended by an error.
    bool add(const uint8_t* rgb, int64_t slot)
    {
        ++steps_;
        return encoder_.encode(rgb, slot);
    }
    bool repeat(int64_t slot)
    {
        ++steps_;
        return encoder_.repeat(slot);
    }
    /// The film is complete, or as complete as an error left it. Without a frame there is no file.
    bool close();

    bool isNameTaken() const { return file_.isNameTaken(); } ///< why open() failed
    bool plays() const { return file_.plays(); }
    int64_t slots() const { return file_.slots(); }  ///< that the file shows
    UniqueFd takeFile() { return file_.takeFile(); } ///< after close()
    bool hasFileError() const { return !file_.error().empty(); }
    const std::string& error() const { return hasFileError() ? file_.error() : encoder_.error(); }
    const std::string& path() const { return path_; }
    const std::string& encoderName() const { return encoder_.name(); }
    /// Rises with every picture that is taken in and every packet that is written. Any thread.
    unsigned steps() const { return steps_; }

private:
    std::string path_;
    std::atomic<unsigned> steps_{0};
    Mp4File file_;
    VideoEncoder encoder_; // hands its packets to the file
};

} // namespace mirvak

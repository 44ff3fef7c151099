// The recording library: films the frames of a camera into an MP4 file (H.264) in real time.
//
// Start, Write for each frame that the camera delivers, Stop; then again, as often as wanted. A film takes
// exactly the time between Start and Stop, whatever rate the camera gives: frames are placed by their arrival
// on a grid of framesPerSecond, repeated or left out as needed. No call throws. Integer results are 0 for
// success and one of MirvakRecordResult otherwise; a failure of Start and Stop, or one that ends a recording,
// prints one line on standard error. Start prints the encoder, Stop the figures, a line each, on standard
// output.
//
// Threads. Start, Stop and the destructor belong on one thread; Write and GetCounts may be called on any
// other at the same time, so long as the object lives. The work is done on a thread of the library, which
// yields to the others of the program.
#pragma once

#include <memory>

#define MIRVAK_RECORD_API __attribute__((visibility("default")))

enum MirvakRecordResult {
    MIRVAK_RECORD_OK = 0,
    MIRVAK_RECORD_NOT_RECORDING = -1, // Start has not succeeded, or Stop was called
    MIRVAK_RECORD_BAD_ARGUMENT = -2,
    MIRVAK_RECORD_BUSY = -3,       // Start during a recording, which goes on
    MIRVAK_RECORD_WRONG_SIZE = -4, // the byte count is not that of a frame
    MIRVAK_RECORD_IO_ERROR = -5,   // the file cannot be made, or could not be written any further
    MIRVAK_RECORD_NO_ENCODER = -6, // none can be opened at this size, the one in use failed, or the encoder's
                                   // libraries cannot be loaded
    MIRVAK_RECORD_NO_MEMORY = -7,
    MIRVAK_RECORD_NO_FRAME = -8, // not one frame came between Start and Stop: there is no file
    MIRVAK_RECORD_EXISTS = -9,   // something has the file's name already
};

class MIRVAK_RECORD_API MirvakRecord
{
public:
    MirvakRecord();
    /// Stops a recording that runs.
    ~MirvakRecord();
    MirvakRecord(const MirvakRecord&) = delete;
    MirvakRecord& operator=(const MirvakRecord&) = delete;

    /// Begins a recording; time counts from its return. `path` in UTF-8, in a folder that exists; a file of
    /// that name is never replaced. `width` and `height` 16 to 4096 px, of which an odd last column or row is
    /// left out of the film; `framesPerSecond` 1 to 60; `mode` 2: 24-bit RGB, rows from the top down without
    /// gaps, the only one; `flags` 0. The file plays at any moment, but for its last two seconds at most,
    /// even when the process is killed. The first Start of a process loads the encoder's libraries (tens of
    /// milliseconds). EXISTS, without a line on standard error; BUSY, BAD_ARGUMENT, IO_ERROR, NO_ENCODER,
    /// NO_MEMORY: no file is left.
    int MirvakRecord_Start(const char* path, int width, int height, int framesPerSecond, int mode, int flags);
    /// Copies one frame of `byteCount` (width x height x 3) bytes; never waits for the encoder. When that
    /// cannot keep up, frames are dropped evenly. NOT_RECORDING, BAD_ARGUMENT (null), WRONG_SIZE, IO_ERROR
    /// and NO_ENCODER (the recording has ended by itself; the file up to there is good), NO_MEMORY.
    int MirvakRecord_Write(const unsigned char* rgb, int byteCount);
    /// The same for a frame of any other size, which is scaled to fit the film, in the middle of black: of a
    /// view that was turned, or a camera whose resolution was changed meanwhile. WRONG_SIZE: `byteCount` is
    /// not `width` x `height` x 3.
    int MirvakRecord_WriteScaled(const unsigned char* rgb, int byteCount, int width, int height);
    /// Encodes what waits and closes the file, which then is complete and plays. Where that takes no longer
    /// than 0.3 s it is also rewritten in the form that begins with its index, for players over a network; a
    /// longer rewriting goes on in the background, beside the file, whose place it takes at its end, unless
    /// another file has got that name. The destructor waits for it, and abandons it after three seconds. A
    /// file at which nothing has moved for three seconds, because the disk does not answer, is left alone:
    /// IO_ERROR. NOT_RECORDING, NO_FRAME; as from Write when the recording had ended by itself.
    int MirvakRecord_Stop();
    /// How the recording goes, or how the last one went: frames of the film, how many of them repeat the one
    /// before, frames of the camera that were dropped because the encoder was late. NOT_RECORDING: none yet.
    /// IO_ERROR, NO_ENCODER, NO_MEMORY: it ended by itself.
    int MirvakRecord_GetCounts(int& written, int& repeated, int& dropped) const;
    /// How long the film is: while it is recorded what has been filmed, afterwards what the file shows.
    /// Results as from GetCounts.
    int MirvakRecord_GetLength(int& milliseconds) const;
    /// How far the rewriting of a film that has ended has come, 0 to 100. NOT_RECORDING: none is being
    /// rewritten. On any thread, as StopCopying.
    int MirvakRecord_GetCopying(int& percent) const;
    /// Gives up the rewriting, soon: the film stays as it is, which plays.
    int MirvakRecord_StopCopying();

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
};

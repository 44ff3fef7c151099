#include "PlainCopy.h"

#include "AtomicFile.h"
#include "AvHandles.h"
#include "UniqueFd.h"

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace mirvak {

namespace {

// What other programs keep for themselves while both files exist.
constexpr uintmax_t roomToLeave = 64 << 20;

// Of the whole copy, when its packets and its index are written; the rest goes to the disk.
constexpr double copyPercent = 50;
constexpr int trailerPercent = 80;

std::string asUrl(const std::string& path)
{
    return "file:" + path;
}

class PlainCopy
{
public:
    PlainCopy(const std::string& path, int film, CopyWatch& watch) : path_(path), film_(film), watch_(watch)
    {
    }

    bool run()
    {
        if (!isFilm(path_) || !hasRoom() || !openInput())
            return false;
        AtomicFile file(path_, IfTaken::replace); // the fragments
        if (file.failed())
            return printed();
        return openOutput(file.temporary()) && copyPackets() && finish() && sync(file.temporary()) &&
               !isCancelled() && replaceFilm(file.temporary());
    }
    void report() const
    {
        if (!why_.empty())
            std::fprintf(stderr, "record: %s stays in fragments: %s\n", path_.c_str(), why_.c_str());
    }

private:
    bool isFilm(const std::string& path)
    {
        struct stat own
        {
        };
        struct stat named
        {
        };
        const bool isSame = ::fstat(film_, &own) == 0 && ::lstat(path.c_str(), &named) == 0 &&
                            own.st_dev == named.st_dev && own.st_ino == named.st_ino;
        bytes_ = static_cast<uintmax_t>(own.st_size);
        return isSame || fail("it is no longer under its name");
    }
    bool hasRoom()
    {
        std::error_code error;
        const auto space = std::filesystem::space(std::filesystem::path(path_).parent_path() / ".", error);
        return error || space.available > bytes_ + roomToLeave || fail("no room for a second file");
    }
    bool openInput()
    {
        AVFormatContext* opened = nullptr;
        const int result = avformat_open_input(
            &opened, asUrl("/proc/self/fd/" + std::to_string(film_)).c_str(), nullptr, nullptr);
        input_.reset(opened);
        return result < 0 ? fail(result) : input_->nb_streams == 1 || fail("no film");
    }
    bool openOutput(const std::string& path)
    {
        const std::string url = asUrl(path);
        AVFormatContext* made = nullptr;
        int result = avformat_alloc_output_context2(&made, nullptr, "mp4", url.c_str());
        output_.reset(made);
        if (result >= 0)
            result = avio_open(&made->pb, url.c_str(), AVIO_FLAG_WRITE);
        if (result < 0)
            return fail(result);
        io_.reset(made->pb);
        AVStream* stream = avformat_new_stream(made, nullptr);
        if (!stream)
            return fail(AVERROR(ENOMEM));
        result = avcodec_parameters_copy(stream->codecpar, input_->streams[0]->codecpar);
        stream->time_base = input_->streams[0]->time_base;
        AVDictionary* options = nullptr;
        av_dict_set(&options, "movflags", "faststart", 0);
        if (result >= 0)
            result = avformat_write_header(made, &options);
        av_dict_free(&options);
        return result >= 0 || fail(result);
    }
    bool copyPackets()
    {
        const AvPacketPtr packet = needed(AvPacketPtr(av_packet_alloc()));
        while (!isCancelled()) {
            int result = av_read_frame(input_.get(), packet.get());
            if (result == AVERROR_EOF)
                return true;
            if (result >= 0) {
                tell(packet->pos);
                packet->pos = -1;
                av_packet_rescale_ts(
                    packet.get(), input_->streams[0]->time_base, output_->streams[0]->time_base);
                result = av_write_frame(output_.get(), packet.get());
                av_packet_unref(packet.get());
            }
            if (result < 0)
                return fail(result);
        }
        return false;
    }
    bool isCancelled() { return watch_.cancelled && !fail("given up"); }
    void tell(int64_t position) const
    {
        if (position > 0 && bytes_ > 0)
            watch_.percent = static_cast<int>(copyPercent * static_cast<double>(position) / double(bytes_));
    }
    bool finish()
    {
        const int result =
            av_write_trailer(output_.get()); // moves what is written, to make room for the index
        watch_.percent = trailerPercent;
        if (result < 0)
            return fail(result);
        output_->pb = nullptr;
        const int closed = avio_close(io_.release());
        return closed >= 0 || fail(closed);
    }
    bool sync(const std::string& path)
    {
        const UniqueFd file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        return (file.isValid() && ::fsync(file.get()) == 0) || fail(AVERROR(errno));
    }
    // The two files change places; only then is it certain what was replaced. The temporary name, and the
    // film in fragments under it, go with their owner.
    bool replaceFilm(const std::string& plain)
    {
        if (exchange(plain))
            return isFilm(plain) || (exchange(plain) && false);
        const bool isUnknown = errno == EINVAL || errno == ENOSYS; // to this file system
        if (!isUnknown)
            return fail(AVERROR(errno));
        return isFilm(path_) && (::rename(plain.c_str(), path_.c_str()) == 0 || fail(AVERROR(errno)));
    }
    bool exchange(const std::string& other) const
    {
        return ::renameat2(AT_FDCWD, other.c_str(), AT_FDCWD, path_.c_str(), RENAME_EXCHANGE) == 0;
    }
    bool fail(const std::string& why)
    {
        why_ = why;
        return false;
    }
    bool fail(int error) { return fail(avText(error)); }
    static bool printed() { return false; } ///< the file printed its own line

    const std::string& path_;
    const int film_;
    CopyWatch& watch_;
    uintmax_t bytes_ = 0;
    std::string why_;
    AvInputPtr input_;
    AvFileIoPtr io_; // before the output, which uses it
    AvOutputPtr output_;
};

} // namespace

bool makePlain(const std::string& path, int film, CopyWatch& watch)
{
    watch.percent = 0;
    PlainCopy copy(path, film, watch);
    const bool done = copy.run();
    copy.report();
    return done;
}

} // namespace mirvak

#include "Mp4File.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace mirvak {

Mp4File::~Mp4File()
{
    end();
}

bool Mp4File::open(const std::string& path)
{
    path_ = path;
    fd_ = UniqueFd(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    nameTaken_ = !fd_.isValid() && errno == EEXIST;
    if (!fd_.isValid())
        return fail(AVERROR(errno));
    constexpr int bufferBytes = 64 * 1024;
    auto* buffer = static_cast<uint8_t*>(av_malloc(bufferBytes));
    if (!buffer)
        throw std::bad_alloc();
    // Without a way to seek: a file of fragments is only ever appended to.
    io_.reset(avio_alloc_context(buffer, bufferBytes, 1, this, nullptr, &Mp4File::writeBytes, nullptr));
    if (!io_) {
        av_free(buffer);
        throw std::bad_alloc();
    }
    return true;
}

int Mp4File::writeBytes(void* file, uint8_t* data, int count)
{
    auto& self = *static_cast<Mp4File*>(file);
    for (int done = 0; done < count;) {
        const ssize_t written = ::write(self.fd_.get(), data + done, static_cast<size_t>(count - done));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return AVERROR(errno);
        done += static_cast<int>(written);
        self.bytes_ += written;
    }
    return count;
}

bool Mp4File::write(AVPacket& packet, const AVCodecContext& encoder)
{
    if (!error_.empty() || !filter(packet, encoder))
        return false;
    if (packet.size == 0) // headers alone
        return true;
    return (begun_ || begin(encoder)) && put(packet, encoder.time_base);
}

// Encoders tell the stream's headers in their packets, some only there. An MP4 file wants them once, at its
// begin.
bool Mp4File::filter(AVPacket& packet, const AVCodecContext& encoder)
{
    if (!filter_ && !makeFilter(encoder))
        return false;
    const int sent = av_bsf_send_packet(filter_.get(), &packet);
    const int received = sent < 0 ? sent : av_bsf_receive_packet(filter_.get(), &packet);
    return received < 0 ? fail(received) : takeHeaders(packet);
}

bool Mp4File::makeFilter(const AVCodecContext& encoder)
{
    AVBSFContext* made = nullptr;
    const int allocated = av_bsf_alloc(av_bsf_get_by_name("extract_extradata"), &made);
    filter_.reset(made);
    if (allocated < 0)
        return fail(allocated);
    av_opt_set_int(filter_->priv_data, "remove", 1, 0);
    filter_->time_base_in = encoder.time_base;
    int result = avcodec_parameters_from_context(filter_->par_in, &encoder);
    if (result >= 0)
        result = av_bsf_init(filter_.get());
    return result >= 0 || fail(result);
}

bool Mp4File::takeHeaders(AVPacket& packet)
{
    size_t size = 0;
    const uint8_t* headers = av_packet_get_side_data(&packet, AV_PKT_DATA_NEW_EXTRADATA, &size);
    if (headers && headers_.empty())
        headers_.assign(headers, headers + size);
    av_packet_free_side_data(&packet);
    return true;
}

bool Mp4File::begin(const AVCodecContext& encoder)
{
    AVFormatContext* made = nullptr;
    const int allocated = avformat_alloc_output_context2(&made, nullptr, "mp4", nullptr);
    output_.reset(made);
    if (allocated < 0)
        return fail(allocated);
    output_->pb = io_.get();
    AVStream* stream = avformat_new_stream(output_.get(), nullptr);
    if (!stream || avcodec_parameters_from_context(stream->codecpar, &encoder) < 0)
        return fail(AVERROR(ENOMEM));
    av_freep(&stream->codecpar->extradata);
    stream->codecpar->extradata_size = 0;
    auto* headers = static_cast<uint8_t*>(av_mallocz(headers_.size() + AV_INPUT_BUFFER_PADDING_SIZE));
    if (!headers || headers_.empty()) {
        av_free(headers);
        return fail("the encoder gave no headers");
    }
    std::copy(headers_.begin(), headers_.end(), headers);
    stream->codecpar->extradata = headers;
    stream->codecpar->extradata_size = static_cast<int>(headers_.size());
    stream->time_base = encoder.time_base;
    stream->avg_frame_rate = encoder.framerate;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "movflags", "frag_keyframe+empty_moov+default_base_moof", 0);
    const int written = avformat_write_header(output_.get(), &options);
    av_dict_free(&options);
    begun_ = written >= 0;
    return begun_ || fail(written);
}

// The fragment before a key frame is written when the key frame is put.
bool Mp4File::put(AVPacket& packet, AVRational timeBase)
{
    const bool endsFragment = (packet.flags & AV_PKT_FLAG_KEY) != 0;
    if (packet.dts == AV_NOPTS_VALUE)
        packet.dts = packet.pts;
    packet.duration = 1;
    packet.stream_index = 0;
    const bool isFirst = output_->streams[0]->nb_frames == 0;
    const int64_t slotsBefore = std::exchange(lastSlot_, packet.pts) + 1;
    av_packet_rescale_ts(&packet, timeBase, output_->streams[0]->time_base);
    const int written = av_write_frame(output_.get(), &packet);
    if (!endsFragment || isFirst)
        return written >= 0 || fail(written);
    return noteFragment(written, slotsBefore);
}

bool Mp4File::noteFragment(int result, int64_t slots)
{
    avio_flush(io_.get());
    if (result >= 0)
        result = io_->error;
    if (result < 0)
        return fail(result);
    goodBytes_ = bytes_;
    goodSlots_ = slots;
    return isInFolder() || fail("the file was deleted");
}

bool Mp4File::isInFolder() const
{
    struct stat status
    {
    };
    return ::fstat(fd_.get(), &status) == 0 && status.st_nlink > 0;
}

bool Mp4File::isUnderItsName() const
{
    struct stat own
    {
    };
    struct stat named
    {
    };
    return ::fstat(fd_.get(), &own) == 0 && ::lstat(path_.c_str(), &named) == 0 &&
           own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

bool Mp4File::close()
{
    if (begun_ && error_.empty())
        noteFragment(av_write_trailer(output_.get()), lastSlot_ + 1);
    end();
    return error_.empty();
}

bool Mp4File::fail(const std::string& why)
{
    if (error_.empty())
        error_ = why;
    return false;
}

void Mp4File::end()
{
    output_.reset();
    if (!fd_.isValid())
        return;
    if (bytes_ > goodBytes_ && ::ftruncate(fd_.get(), goodBytes_) != 0)
        fail(AVERROR(errno)); // the rest does no harm: players stop there
    if (plays())
        written_ = UniqueFd(::fcntl(fd_.get(), F_DUPFD_CLOEXEC, 0));
    else if (isUnderItsName())
        ::unlink(path_.c_str());
    if (::close(fd_.release()) != 0) // network file systems report a full disk here
        fail(AVERROR(errno));
}

} // namespace mirvak

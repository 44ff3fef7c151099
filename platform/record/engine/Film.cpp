#include "Film.h"

namespace mirvak {

Film::Film(std::string path, const VideoFormat& format, std::vector<EncoderChoice> choices)
    : path_(std::move(path)),
      encoder_(format, std::move(choices), [this](AVPacket& packet, const AVCodecContext& encoder) {
          ++steps_;
          return file_.write(packet, encoder);
      })
{
    av_log_set_level(AV_LOG_QUIET); // failures print one line of our own
}

bool Film::open()
{
    return encoder_.open() && file_.open(path_);
}

bool Film::close()
{
    const bool isEncoded = error().empty() && encoder_.finish();
    return file_.close() && isEncoded;
}

} // namespace mirvak

#pragma once

#include "CameraBackend.h"
#include "Codec.h"
#include "JpegDecoder.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace mirvak {

/// The pictures that a virtual camera plays, as raw frames. Holds the frame of one picture at a time, so that
/// showing it again costs nothing. One thread at a time.
class PictureSource
{
public:
    /// The JPEG and PNG files of a folder in name order, or the one file that `source` names. A folder whose
    /// pictures lie in folders of their sizes, as "1600x1200", answers with those of `size`, or with the
    /// largest when there are none or `size` is empty. Empty when there is nothing of the kind.
    static std::vector<std::filesystem::path> filesOf(const std::filesystem::path& source,
                                                      cv::Size size = {});

    explicit PictureSource(std::vector<std::filesystem::path> files);

    size_t count() const { return files_.size(); }
    /// Size of the first picture that can be read.
    std::optional<cv::Size> firstSize();
    /// The picture as a frame of `size`, fitted on black ground, or of its own size when `size` is empty. A
    /// JPEG file of the right size, coded as cameras do and upright, is passed on as it is, every other
    /// picture as pixels. The bytes stay valid until the next call. False when the file is unreadable; it is
    /// then dropped from the list.
    bool frame(size_t index, cv::Size size, RawFrame& frame);
    /// A frame like the last one with data that no decoder accepts.
    RawFrame brokenFrame();

private:
    bool load(const std::filesystem::path& file, cv::Size size);
    bool loadJpeg(cv::Size size);
    void showPixels(const cv::Mat& rgb, cv::Size size);
    void drop(size_t index);

    std::vector<std::filesystem::path> files_;
    JpegDecoder jpeg_;
    Bytes bytes_;     // the file as it is
    cv::Mat decoded_; // its picture
    cv::Mat canvas_;  // fitted to the frame
    RawFrame frame_;  // points into bytes_ or canvas_
    std::optional<size_t> shown_;
    cv::Size shownSize_;
    Bytes broken_;
};

} // namespace mirvak

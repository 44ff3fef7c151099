#include "PictureSource.h"

#include "JpegCodec.h"
#include "JpegHeader.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>

namespace mirvak {
namespace {

namespace fs = std::filesystem;

bool hasPictureName(const fs::path& file)
{
    std::string extension = file.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) {
        return static_cast<char>(std::tolower(c));
    });
    return extension == ".jpg" || extension == ".jpeg" || extension == ".png";
}

std::vector<fs::path> entriesOf(const fs::path& folder)
{
    std::vector<fs::path> entries;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed))
        entries.push_back(entry->path());
    return entries;
}

/// The folder among `entries` that is named after `size`, else after the largest size; empty without any.
fs::path folderOfSize(const std::vector<fs::path>& entries, cv::Size size)
{
    fs::path best;
    long long most = 0;
    for (const fs::path& entry : entries) {
        cv::Size named;
        int end = 0;
        const std::string name = entry.filename().string();
        const bool isSize = std::sscanf(name.c_str(), "%5dx%5d%n", &named.width, &named.height, &end) == 2 &&
                            static_cast<size_t>(end) == name.size();
        std::error_code failed;
        if (!isSize || !fs::is_directory(entry, failed))
            continue;
        if (named == size)
            return entry;
        const long long pixels = static_cast<long long>(named.width) * named.height;
        if (pixels > most) {
            most = pixels;
            best = entry;
        }
    }
    return best;
}

bool readFile(const fs::path& file, Bytes& bytes)
{
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    const std::streamoff length = stream ? static_cast<std::streamoff>(stream.tellg()) : -1;
    if (length <= 0)
        return false;
    bytes.resize(static_cast<size_t>(length));
    stream.seekg(0);
    return static_cast<bool>(stream.read(reinterpret_cast<char*>(bytes.data()), length));
}

// PNG, third edition, 11.2.1: the header chunk follows the 8 bytes of the signature.
std::optional<cv::Size> pngSize(const Bytes& bytes)
{
    constexpr size_t typeAt = 12, widthAt = 16, heightAt = 20, end = 24;
    if (bytes.size() < end || std::memcmp(bytes.data() + typeAt, "IHDR", 4) != 0)
        return std::nullopt;
    const auto number = [&](size_t at) {
        return bytes[at] << 24 | bytes[at + 1] << 16 | bytes[at + 2] << 8 | bytes[at + 3];
    };
    return cv::Size(number(widthAt), number(heightAt));
}

// A camera sends nothing else, and a progressive file takes several times as long at each frame.
// ITU-T T.81, B.1.1.3: frame headers are 0xc0 to 0xcf but for three other markers; 0xc0 and 0xc1 are
// sequential.
bool isSequential(const Bytes& jpeg)
{
    for (size_t at = 2; at + 4 <= jpeg.size() && jpeg[at] == 0xff;) {
        const uint8_t marker = jpeg[at + 1];
        if (marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc)
            return marker <= 0xc1;
        at += 2 + static_cast<size_t>(jpeg[at + 2] << 8 | jpeg[at + 3]);
    }
    return false;
}

/// The size as seen, of a picture stored with the Exif orientation, and the other way round.
cv::Size turned(cv::Size size, int orientation)
{
    return orientation > 4 ? cv::Size(size.height, size.width) : size;
}

cv::Size fitted(cv::Size picture, cv::Size box)
{
    const double scale = std::min(static_cast<double>(box.width) / picture.width,
                                  static_cast<double>(box.height) / picture.height);
    return {std::clamp(static_cast<int>(std::lround(picture.width * scale)), 1, box.width),
            std::clamp(static_cast<int>(std::lround(picture.height * scale)), 1, box.height)};
}

} // namespace

std::vector<fs::path> PictureSource::filesOf(const fs::path& source, cv::Size size)
{
    std::error_code failed;
    if (fs::is_regular_file(source, failed))
        return {source};
    std::vector<fs::path> files = entriesOf(source);
    const fs::path best = folderOfSize(files, size);
    if (!best.empty())
        files = entriesOf(best);
    files.erase(std::remove_if(files.begin(), files.end(), std::not_fn(hasPictureName)), files.end());
    std::sort(files.begin(), files.end());
    return files;
}

PictureSource::PictureSource(std::vector<fs::path> files) : files_(std::move(files)) {}

std::optional<cv::Size> PictureSource::firstSize()
{
    while (!files_.empty()) {
        shown_.reset();
        if (readFile(files_.front(), bytes_)) {
            auto size = jpeg_.size(bytes_.data(), bytes_.size());
            if (!size)
                size = pngSize(bytes_);
            if (size)
                return turned(*size, readJpegHeader(bytes_).orientation);
        }
        drop(0);
    }
    return std::nullopt;
}

bool PictureSource::frame(size_t index, cv::Size size, RawFrame& frame)
{
    if (shown_ != index || shownSize_ != size) {
        shown_.reset();
        if (!load(files_[index], size)) {
            drop(index);
            return false;
        }
        shown_ = index;
        shownSize_ = size;
    }
    frame = frame_;
    return true;
}

RawFrame PictureSource::brokenFrame()
{
    RawFrame frame = frame_;
    const size_t half = frame.format == PixelFormat::Mjpeg ? frame.size / 2 : 0;
    broken_.assign(frame.data, frame.data + half);
    frame.format = PixelFormat::Mjpeg;
    frame.data = broken_.data();
    frame.size = broken_.size();
    return frame;
}

bool PictureSource::load(const fs::path& file, cv::Size size)
{
    if (!readFile(file, bytes_))
        return false;
    if (looksLikeJpeg(bytes_) && loadJpeg(size))
        return true;
    const std::optional<Image> image = decodeImage(bytes_);
    if (!image)
        return false;
    showPixels(image->pixels, size);
    return true;
}

bool PictureSource::loadJpeg(cv::Size size)
{
    const auto stored = jpeg_.size(bytes_.data(), bytes_.size());
    if (!stored)
        return false;
    const int orientation = readJpegHeader(bytes_).orientation;
    if (orientation == 1 && isSequential(bytes_) && (size.empty() || *stored == size)) {
        frame_ = {PixelFormat::Mjpeg, stored->width, stored->height, 0, bytes_.data(), bytes_.size()};
        return true;
    }
    cv::Size needed = *stored;
    if (!size.empty())
        needed = turned(fitted(turned(*stored, orientation), size), orientation);
    if (!jpeg_.decodeReduced(bytes_.data(), bytes_.size(), needed, decoded_))
        return false;
    applyOrientation(decoded_, orientation);
    showPixels(decoded_, size);
    return true;
}

void PictureSource::showPixels(const cv::Mat& rgb, cv::Size size)
{
    if (size.empty() || rgb.size() == size) {
        canvas_ = rgb;
    } else {
        const cv::Size inner = fitted(rgb.size(), size);
        const cv::Rect place({(size.width - inner.width) / 2, (size.height - inner.height) / 2}, inner);
        canvas_.create(size, CV_8UC3);
        canvas_.setTo(cv::Scalar::all(0));
        const bool smaller = inner.width < rgb.cols;
        cv::resize(rgb, canvas_(place), inner, 0, 0, smaller ? cv::INTER_AREA : cv::INTER_LINEAR);
    }
    frame_ = {PixelFormat::Rgb24,
              canvas_.cols,
              canvas_.rows,
              canvas_.step,
              canvas_.data,
              canvas_.step * static_cast<size_t>(canvas_.rows)};
}

void PictureSource::drop(size_t index)
{
    std::fprintf(stderr, "picture left out, it cannot be read: %s\n", files_[index].c_str());
    files_.erase(files_.begin() + static_cast<std::ptrdiff_t>(index));
}

} // namespace mirvak

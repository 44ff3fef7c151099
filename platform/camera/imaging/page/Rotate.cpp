#include "Rotate.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace mirvak {

namespace {

using Byte = unsigned char;

// A quarter turn reads along rows and writes along columns. Tile by tile the lines of both sides stay in the
// first cache, where whole rows would miss it at every pixel.
constexpr int tile = 64;

struct Walk
{
    const Byte* from;   ///< source pixel of the target's first pixel
    ptrdiff_t alongRow; ///< bytes from the source of a target pixel to that of its right neighbour
    ptrdiff_t downwards;
};

void copyPixel(const Byte* in, Byte* out)
{
    out[0] = in[0];
    out[1] = in[1];
    out[2] = in[2];
}

// Three bytes of a pixel and one of what lies behind it.
std::uint32_t loadPixel(const Byte* in)
{
    std::uint32_t value;
    std::memcpy(&value, in, sizeof value);
    return value & 0xffffffU;
}

void storeWord(std::uint32_t word, Byte* out)
{
    std::memcpy(out, &word, sizeof word);
}

// Four pixels as three words: a quarter of the memory operations of twelve bytes. Little-endian, like every
// machine that this runs on.
void copyFourPixels(const Byte* in, ptrdiff_t step, Byte* out)
{
    const std::uint32_t a = loadPixel(in), b = loadPixel(in + step), c = loadPixel(in + 2 * step),
                        d = loadPixel(in + 3 * step);
    // One store each: gathering the words first would make the next, wider read wait for them.
    storeWord(a | b << 24, out);
    storeWord(b >> 8 | c << 16, out + 4);
    storeWord(c >> 16 | d << 8, out + 8);
}

// `wide`: no pixel of the tile is the very last of the picture, behind which there is nothing to read.
void turnTile(const Walk& walk, const cv::Rect& area, bool wide, cv::Mat& target)
{
    for (int y = area.y; y < area.y + area.height; ++y) {
        const Byte* in = walk.from + y * walk.downwards + area.x * walk.alongRow;
        Byte* out = target.ptr(y, area.x);
        int x = 0;
        for (; wide && x + 4 <= area.width; x += 4, in += 4 * walk.alongRow, out += 12)
            copyFourPixels(in, walk.alongRow, out);
        for (; x < area.width; ++x, in += walk.alongRow, out += 3)
            copyPixel(in, out);
    }
}

void turnTiles(const Walk& walk, const Byte* last, cv::Mat& target)
{
    for (int y = 0; y < target.rows; y += tile) {
        for (int x = 0; x < target.cols; x += tile) {
            const cv::Rect area(x, y, std::min(tile, target.cols - x), std::min(tile, target.rows - y));
            const auto source = [&](int column, int row) {
                return walk.from + row * walk.downwards + column * walk.alongRow;
            };
            // The last pixel of the picture can only be a corner of a tile.
            const int right = area.br().x - 1, bottom = area.br().y - 1;
            const bool wide = source(x, y) != last && source(right, y) != last && source(x, bottom) != last &&
                              source(right, bottom) != last;
            turnTile(walk, area, wide, target);
        }
    }
}

} // namespace

void rotateQuarters(Image& image, int quarterTurns)
{
    const int turns = (quarterTurns % 4 + 4) % 4;
    if (turns == 0)
        return;
    const cv::Mat& source = image.pixels;
    const bool swap = turns != 2;
    image.spare.create(swap ? source.cols : source.rows, swap ? source.rows : source.cols, CV_8UC3);
    const auto step = static_cast<ptrdiff_t>(source.step);
    const int right = source.cols - 1, bottom = source.rows - 1;
    Walk walk{};
    switch (turns) {
    case 1:
        walk = {source.ptr(bottom, 0), -step, 3};
        break;
    case 2:
        walk = {source.ptr(bottom, right), -3, -step};
        break;
    default:
        walk = {source.ptr(0, right), step, -3};
        break;
    }
    turnTiles(walk, source.ptr(bottom, right), image.spare);
    std::swap(image.pixels, image.spare);
}

void rotate(Image& image, double degrees)
{
    if (!std::isfinite(degrees))
        return;
    const double quarters = degrees / 90;
    if (std::abs(quarters - std::round(quarters)) < 1e-9) {
        rotateQuarters(image, static_cast<int>(std::fmod(std::round(quarters), 4)));
        return;
    }
    const double angle = degrees * CV_PI / 180;
    const double width = image.pixels.cols, height = image.pixels.rows;
    const double c = std::abs(std::cos(angle)), s = std::abs(std::sin(angle));
    // Half a pixel more would be rounding dust of the sine, not picture.
    const cv::Size grown(static_cast<int>(std::ceil(width * c + height * s - 1e-6)),
                         static_cast<int>(std::ceil(width * s + height * c - 1e-6)));
    cv::Mat turn =
        cv::getRotationMatrix2D({static_cast<float>((width - 1) / 2), static_cast<float>((height - 1) / 2)},
                                -degrees, // OpenCV counts counter-clockwise
                                1.0);
    turn.at<double>(0, 2) += (grown.width - width) / 2;
    turn.at<double>(1, 2) += (grown.height - height) / 2;
    cv::warpAffine(
        image.pixels, image.spare, turn, grown, cv::INTER_LINEAR, cv::BORDER_CONSTANT, cv::Scalar::all(255));
    std::swap(image.pixels, image.spare);
}

} // namespace mirvak

#include "Reduction.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

using Byte = unsigned char;
using Sum = unsigned short;

// The two rows of a block lie evenly about its middle, so the reduced pixel stays where it was. `ahead`:
// bytes to the rows of the next block, which come from memory meanwhile.
void addRows(const Byte* upper, const Byte* lower, int values, ptrdiff_t ahead, Sum* sum)
{
    constexpr int together = 64; // bytes of a cache line
    int i = 0;
    for (; i + together <= values; i += together) {
        __builtin_prefetch(upper + i + ahead);
        __builtin_prefetch(lower + i + ahead);
        for (int k = i; k < i + together; ++k)
            sum[k] = static_cast<Sum>(upper[k] + lower[k]);
    }
    for (; i < values; ++i)
        sum[i] = static_cast<Sum>(upper[i] + lower[i]);
}

// `taps` columns of each block, evenly about its middle; a constant number lets the compiler unroll, and a
// fourth value beside the three colours fills its vectors. `colours`: room for four a block.
template <int taps>
void addColumns(const Sum* sum, int factor, int width, Sum* colours, Byte* red, Byte* green, Byte* blue)
{
    int offsets[taps];
    for (int i = 0; i < taps; ++i)
        offsets[i] = 3 * static_cast<int>(std::lround((i + 0.5) * factor / taps - 0.5));
    const int step = 3 * factor;
    for (int x = 0; x < width; ++x, sum += step) {
        Sum colour[4] = {taps, taps, taps, taps}; // half of the divisor, for rounding
        for (int i = 0; i < taps; ++i) {
            for (int c = 0; c < 4; ++c)
                colour[c] = static_cast<Sum>(colour[c] + sum[offsets[i] + c]);
        }
        std::copy(colour, colour + 4, colours + 4 * static_cast<ptrdiff_t>(x));
    }
    constexpr unsigned scale = (1U << 16) / (2 * taps);
    for (int x = 0; x < width; ++x, colours += 4) {
        red[x] = static_cast<Byte>(colours[0] * scale >> 16);
        green[x] = static_cast<Byte>(colours[1] * scale >> 16);
        blue[x] = static_cast<Byte>(colours[2] * scale >> 16);
    }
}

} // namespace

void Reduction::build(const cv::Mat& rgb, int longestSide)
{
    const int longest = std::max(rgb.cols, rgb.rows), shortest = std::min(rgb.cols, rgb.rows);
    factor_ =
        std::clamp(static_cast<int>(std::lround(static_cast<double>(longest) / longestSide)), 1, shortest);
    const cv::Size size(rgb.cols / factor_, rgb.rows / factor_);
    for (cv::Mat& plane : planes_)
        plane.create(size, CV_8UC1);
    const int values = size.width * factor_ * 3;
    rowSum_.resize(static_cast<size_t>(values) + 1);
    colours_.resize(4 * static_cast<size_t>(size.width));
    const int first = factor_ / 4;
    const auto ahead = static_cast<ptrdiff_t>(rgb.step) * factor_;
    for (int y = 0; y < size.height; ++y) {
        const int top = y * factor_;
        addRows(rgb.ptr(top + first), rgb.ptr(top + factor_ - 1 - first), values, ahead, rowSum_.data());
        Byte* r = planes_[0].ptr(y);
        Byte* g = planes_[1].ptr(y);
        Byte* b = planes_[2].ptr(y);
        if (factor_ == 1)
            addColumns<1>(rowSum_.data(), factor_, size.width, colours_.data(), r, g, b);
        else if (factor_ == 2)
            addColumns<2>(rowSum_.data(), factor_, size.width, colours_.data(), r, g, b);
        else if (factor_ % 2 == 1)
            addColumns<3>(rowSum_.data(), factor_, size.width, colours_.data(), r, g, b);
        else
            addColumns<4>(rowSum_.data(), factor_, size.width, colours_.data(), r, g, b);
    }
}

} // namespace mirvak

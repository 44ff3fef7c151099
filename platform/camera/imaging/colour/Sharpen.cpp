#include "Sharpen.h"

#include <opencv2/core/hal/intrin.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace mirvak {

namespace {

struct Strength
{
    int amount; ///< of 256
    int floor;  ///< levels: smaller differences are noise
};

// How far a pixel moves away from its softened self; back to it where the difference is noise.
int changeOf(int grey, int soft, const Strength& how)
{
    const int difference = std::abs(grey - soft);
    const int change = (std::max(0, difference - how.floor) * how.amount >> 8) -
                       std::min(difference, std::max(0, 2 * how.floor - difference));
    return grey > soft ? change : -change;
}

#if CV_SIMD128
// As changeOf(), sixteen pixels at a time.
int sharpenBlocks(
    const unsigned char* grey, const unsigned char* soft, unsigned char* rgb, int width, const Strength& how)
{
    constexpr int block = 16;
    const cv::v_uint8x16 floor = cv::v_setall_u8(static_cast<unsigned char>(how.floor)),
                         twice = cv::v_setall_u8(static_cast<unsigned char>(2 * how.floor));
    const cv::v_uint16x8 amount = cv::v_setall_u16(static_cast<unsigned short>(how.amount));
    int x = 0;
    for (; x + block <= width; x += block) {
        const cv::v_uint8x16 g = cv::v_load(grey + x), s = cv::v_load(soft + x),
                             difference = cv::v_absdiff(g, s);
        cv::v_uint16x8 low, high;
        cv::v_expand(difference - floor, low, high); // saturates at 0
        const cv::v_uint8x16 more =
            cv::v_pack(cv::v_mul_wrap(low, amount) >> 8, cv::v_mul_wrap(high, amount) >> 8);
        const cv::v_uint8x16 back = cv::v_min(difference, twice - difference);
        const cv::v_uint8x16 brighter = g > s;
        const cv::v_uint8x16 up = cv::v_select(brighter, more, back),
                             down = cv::v_select(brighter, back, more);
        cv::v_uint8x16 r, gr, b;
        cv::v_load_deinterleave(rgb + ptrdiff_t{3} * x, r, gr, b);
        cv::v_store_interleave(rgb + ptrdiff_t{3} * x, r + up - down, gr + up - down, b + up - down);
    }
    return x;
}
#else
int sharpenBlocks(const unsigned char*, const unsigned char*, unsigned char*, int, const Strength&)
{
    return 0;
}
#endif

} // namespace

void sharpen(cv::Mat& rgb, double amount, double noise)
{
    const Strength how{static_cast<int>(amount * 255),
                       static_cast<int>(std::lround(std::min(12.0, 1.5 * noise)))};
    cv::Mat grey, soft;
    cv::cvtColor(rgb, grey, cv::COLOR_RGB2GRAY);
    cv::GaussianBlur(grey, soft, {0, 0}, 1.2);
    cv::parallel_for_(cv::Range(0, rgb.rows), [&](const cv::Range& rows) {
        for (int y = rows.start; y < rows.end; ++y) {
            const unsigned char *g = grey.ptr(y), *s = soft.ptr(y);
            unsigned char* pixel = rgb.ptr(y);
            for (int x = sharpenBlocks(g, s, pixel, rgb.cols, how); x < rgb.cols; ++x) {
                for (int c = 0; c < 3; ++c)
                    pixel[3 * x + c] =
                        cv::saturate_cast<unsigned char>(pixel[3 * x + c] + changeOf(g[x], s[x], how));
            }
        }
    });
}

} // namespace mirvak

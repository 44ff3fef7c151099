#include "Gradients.h"

#include "EdgeField.h"

#include <opencv2/core/hal/intrin.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {

/// The sums of Sobel's operator down each column of one row of a plane.
struct ColumnSums
{
    const short *smoothed, *difference;
};

// In two passes that the compiler can run eight pixels at a time: down the columns, then along the row.
void sumColumns(const unsigned char* __restrict above,
                const unsigned char* __restrict here,
                const unsigned char* __restrict below,
                int width,
                short* __restrict smoothed,
                short* __restrict difference)
{
    for (int x = 0; x < width; ++x) {
        smoothed[x] = static_cast<short>(above[x] + 2 * here[x] + below[x]);
        difference[x] = static_cast<short>(below[x] - above[x]);
    }
}

/// The gradients of some pixels side by side, and |x| + |y| of each.
struct Gradients
{
    cv::v_int16x8 x, y, size;
};
constexpr int together = cv::v_int16x8::nlanes;

Gradients gradientsAt(const ColumnSums& sums, int x)
{
    const short *s = sums.smoothed + x, *d = sums.difference + x;
    const cv::v_int16x8 middle = cv::v_load(d);
    Gradients g;
    g.x = cv::v_load(s + 1) - cv::v_load(s - 1);
    g.y = cv::v_load(d - 1) + middle + middle + cv::v_load(d + 1);
    g.size = cv::v_reinterpret_as_s16(cv::v_abs(g.x) + cv::v_abs(g.y));
    return g;
}

/// Of a row of at least `together` pixels between its two ends, which have no neighbours.
void keepStrongest(const std::array<ColumnSums, 3>& colours, int width, short* gx, short* gy, short* size)
{
    const int last = width - 1 - together; // the end is done twice where it does not divide
    for (int next = 1; next < last + together; next += together) {
        const int x = std::min(next, last);
        Gradients most = gradientsAt(colours[0], x);
        for (size_t c = 1; c < colours.size(); ++c) {
            const Gradients other = gradientsAt(colours[c], x);
            const cv::v_int16x8 isStronger = other.size > most.size;
            most.x = cv::v_select(isStronger, other.x, most.x);
            most.y = cv::v_select(isStronger, other.y, most.y);
            most.size = cv::v_max(other.size, most.size);
        }
        cv::v_store(gx + x, most.x);
        cv::v_store(gy + x, most.y);
        cv::v_store(size + x, most.size);
    }
}

} // namespace

void findGradients(const std::array<cv::Mat, 3>& planes,
                   std::vector<short>& work,
                   cv::Mat& x,
                   cv::Mat& y,
                   cv::Mat& magnitude)
{
    const cv::Size size = planes[0].size();
    const bool isStrip = size.width < together + 2; // too narrow for a page
    for (cv::Mat* field : {&x, &y, &magnitude}) {
        field->create(size, CV_16SC1);
        if (isStrip)
            field->setTo(0);
        else
            cv::rectangle(*field, {{}, size}, 0);
    }
    const auto width = static_cast<size_t>(size.width);
    work.resize(2 * planes.size() * width);
    std::array<ColumnSums, 3> sums;
    for (int row = 1; row < size.height - 1 && !isStrip; ++row) {
        for (size_t c = 0; c < planes.size(); ++c) {
            short* smoothed = work.data() + 2 * c * width;
            const cv::Mat& plane = planes[c];
            sumColumns(plane.ptr(row - 1),
                       plane.ptr(row),
                       plane.ptr(row + 1),
                       size.width,
                       smoothed,
                       smoothed + width);
            sums[c] = {smoothed, smoothed + width};
        }
        keepStrongest(sums, size.width, x.ptr<short>(row), y.ptr<short>(row), magnitude.ptr<short>(row));
    }
}

void findDirections(const short* dx, const short* dy, std::array<int, directionsAtOnce>& directions)
{
    constexpr float steps = edgeDirections / static_cast<float>(CV_PI);
    constexpr float p1 = 0.9997878F, p3 = -0.3258083F, p5 = 0.1555786F, p7 = -0.04432655F;
    using cv::v_setall_f32;
    const cv::v_float32x4 x = cv::v_cvt_f32(cv::v_load_expand(dx)), y = cv::v_cvt_f32(cv::v_load_expand(dy));
    const cv::v_float32x4 ax = cv::v_abs(x), ay = cv::v_abs(y);
    const cv::v_float32x4 a = cv::v_min(ax, ay) / cv::v_max(cv::v_max(ax, ay), v_setall_f32(1)), c = a * a;
    cv::v_float32x4 angle = cv::v_muladd(c, v_setall_f32(steps * p7), v_setall_f32(steps * p5));
    angle = cv::v_muladd(c, angle, v_setall_f32(steps * p3));
    angle = a * cv::v_muladd(c, angle, v_setall_f32(steps * p1));
    angle = cv::v_select(ay > ax, v_setall_f32(0.5F * edgeDirections) - angle, angle);
    angle = cv::v_select(x * y < cv::v_setzero_f32(), v_setall_f32(edgeDirections) - angle, angle);
    const cv::v_int32x4 direction = cv::v_round(angle), whole = cv::v_setall_s32(edgeDirections);
    cv::v_store(directions.data(), direction & (direction < whole));
}

} // namespace mirvak

#include "PaperModel.h"

#include <opencv2/core/hal/intrin.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace mirvak {

namespace {

using Gain = std::uint16_t;

// Gains reach 255 / 36 and more at the white point: with ten bits behind the point twice their differences
// fit 16 bits, which processors multiply eight at a time.
constexpr int gainBits = 10, pixelBits = 16 - gainBits;
constexpr double mostGain = (1 << 14) - 1;

// What a pixel is multiplied with at each place of the model's grid.
cv::Mat gainsOf(const PaperModel& model, const Flattening& how)
{
    cv::Mat gains(model.paper().size(), CV_32FC3);
    for (int y = 0; y < gains.rows; ++y) {
        for (int x = 0; x < gains.cols; ++x) {
            const cv::Vec3f& paper = model.paper().at<cv::Vec3f>(y, x);
            for (int c = 0; c < 3; ++c) {
                const double margin = how.noiseMargin * model.noise() / paper[c];
                const double clean = std::max(0.6, std::min(how.whiteFrom, 1 - margin));
                const double white = 1 - model.share().at<float>(y, x) * (1 - clean);
                gains.at<cv::Vec3f>(y, x)[c] =
                    static_cast<float>(std::min((1 << gainBits) * 255 / (paper[c] * white), mostGain));
            }
        }
    }
    return gains;
}

struct Column
{
    int left, right; ///< of the grid, times three
    float share;     ///< of the right one
};

std::vector<Column> columnsOf(int width, int gridWidth, int factor)
{
    std::vector<Column> columns(static_cast<size_t>(width));
    for (int x = 0; x < width; ++x) {
        const float at = std::clamp((static_cast<float>(x) + 0.5F) / static_cast<float>(factor) - 0.5F,
                                    0.0F,
                                    static_cast<float>(gridWidth - 1));
        const int left = std::min(static_cast<int>(at), gridWidth - 1);
        columns[static_cast<size_t>(x)] = {
            3 * left, 3 * std::min(left + 1, gridWidth - 1), at - static_cast<float>(left)};
    }
    return columns;
}

class RowFlattener
{
public:
    RowFlattener(const cv::Mat& gains,
                 const PaperModel& model,
                 int width,
                 const std::array<unsigned char, 256>& curve)
        : gains_(gains), shares_(model.share()), factor_(model.factor()), curve_(curve),
          isStraight_(curve == Flattening::straightCurve()),
          columns_(columnsOf(width, gains.cols, model.factor()))
    {
    }

    void apply(int y, unsigned char* rgb)
    {
        const float at = std::clamp((static_cast<float>(y) + 0.5F) / static_cast<float>(factor_) - 0.5F,
                                    0.0F,
                                    static_cast<float>(gains_.rows - 1));
        const int upper = std::min(static_cast<int>(at), gains_.rows - 1);
        moveTo(upper);
        const float lower = at - static_cast<float>(upper);
        multiply(rgb, static_cast<int>(lower * 32767));
        if (isStraight_)
            return;
        if (isPaperOnly_)
            bend(rgb);
        else
            bendOnPaper(rgb, upper, lower);
    }

private:
    // The two rows of the grid between which the picture's row lies, at the picture's width.
    void moveTo(int upper)
    {
        if (upper == at_)
            return;
        if (upper == at_ + 1 && at_ >= 0)
            std::swap(upper_, lower_);
        else
            widen(upper, upper_);
        const int lower = std::min(upper + 1, gains_.rows - 1);
        widen(lower, lower_);
        at_ = upper;
        isPaperOnly_ =
            cv::countNonZero(shares_.row(upper) < 1) + cv::countNonZero(shares_.row(lower) < 1) == 0;
    }

    void widen(int row, std::vector<Gain>& wide) const
    {
        wide.resize(3 * columns_.size());
        const float* gains = gains_.ptr<float>(row);
        Gain* out = wide.data();
        for (const Column& column : columns_) {
            for (int c = 0; c < 3; ++c) {
                const float left = gains[column.left + c], right = gains[column.right + c];
                *out++ = static_cast<Gain>(left + column.share * (right - left));
            }
        }
    }

    // `share` of the lower row, of 32768.
    void multiply(unsigned char* rgb, int share) const
    {
        const Gain *a = upper_.data(), *b = lower_.data();
        size_t i = 0;
#if CV_SIMD128
        constexpr size_t block = 16;
        const cv::v_int16x8 part = cv::v_setall_s16(static_cast<short>(share));
        const auto gainsAt = [&](size_t at) {
            const cv::v_int16x8 upper = cv::v_reinterpret_as_s16(cv::v_load(a + at)),
                                step = cv::v_reinterpret_as_s16(cv::v_load(b + at)) - upper;
            return cv::v_reinterpret_as_u16(upper + cv::v_mul_hi(step + step, part));
        };
        for (; i + block <= upper_.size(); i += block) {
            cv::v_uint16x8 low, high;
            cv::v_expand(cv::v_load(rgb + i), low, high);
            low = cv::v_mul_hi(low << pixelBits, gainsAt(i));
            high = cv::v_mul_hi(high << pixelBits, gainsAt(i + block / 2));
            cv::v_store(rgb + i, cv::v_pack(low, high)); // saturates
        }
#endif
        for (; i < upper_.size(); ++i) {
            const int gain = a[i] + (2 * (b[i] - a[i]) * share >> 16);
            rgb[i] = static_cast<unsigned char>(std::min(255, (rgb[i] << pixelBits) * gain >> 16));
        }
    }

    void bend(unsigned char* rgb) const
    {
        for (const unsigned char* end = rgb + 3 * columns_.size(); rgb < end; rgb += 3) {
            rgb[0] = curve_[rgb[0]];
            rgb[1] = curve_[rgb[1]];
            rgb[2] = curve_[rgb[2]];
        }
    }

    // The curve is for print; areas and pictures keep their colours.
    void bendOnPaper(unsigned char* rgb, int upper, float share) const
    {
        const float* a = shares_.ptr<float>(upper);
        const float* b = shares_.ptr<float>(std::min(upper + 1, shares_.rows - 1));
        for (const Column& column : columns_) {
            const int left = column.left / 3, right = column.right / 3;
            const float above = a[left] + column.share * (a[right] - a[left]),
                        below = b[left] + column.share * (b[right] - b[left]);
            const int paper = static_cast<int>((above + share * (below - above)) * 256);
            for (int c = 0; c < 3; ++c, ++rgb)
                *rgb = static_cast<unsigned char>(*rgb + ((curve_[*rgb] - *rgb) * paper >> 8));
        }
    }

    const cv::Mat& gains_;
    const cv::Mat& shares_;
    int factor_;
    const std::array<unsigned char, 256>& curve_;
    bool isStraight_;
    std::vector<Column> columns_;
    int at_ = -1;
    bool isPaperOnly_ = true;
    std::vector<Gain> upper_, lower_;
};

} // namespace

std::array<unsigned char, 256> Flattening::straightCurve()
{
    std::array<unsigned char, 256> curve{};
    for (size_t i = 0; i < curve.size(); ++i)
        curve[i] = static_cast<unsigned char>(i);
    return curve;
}

void flatten(cv::Mat& rgb, const PaperModel& model, const Flattening& how)
{
    const cv::Mat gains = gainsOf(model, how);
    cv::parallel_for_(cv::Range(0, rgb.rows), [&](const cv::Range& rows) {
        RowFlattener flattener(gains, model, rgb.cols, how.curve);
        for (int y = rows.start; y < rows.end; ++y)
            flattener.apply(y, rgb.ptr(y));
    });
}

} // namespace mirvak

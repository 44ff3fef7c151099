#include "PaperModel.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int gainBits =
    7; // gains up to 255 / 36 and the white point above them fit 16 bits and 8-bit pixels 24

// What a pixel is multiplied with at each place of the model's grid.
cv::Mat gainsOf(const PaperModel& model, const Flattening& how)
{
    cv::Mat gains(model.paper().size(), CV_32FC3);
    for (int y = 0; y < gains.rows; ++y) {
        for (int x = 0; x < gains.cols; ++x) {
            const cv::Vec3f& paper = model.paper().at<cv::Vec3f>(y, x);
            for (int c = 0; c < 3; ++c) {
                const double margin = how.noiseMargin * model.noise() / paper[c];
                const double white = std::max(0.6, std::min(how.whiteFrom, 1 - margin));
                gains.at<cv::Vec3f>(y, x)[c] = static_cast<float>((1 << gainBits) * 255 / (paper[c] * white));
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
    RowFlattener(const cv::Mat& gains, int factor, int width, const std::array<unsigned char, 256>& curve)
        : gains_(gains), factor_(factor), curve_(curve), columns_(columnsOf(width, gains.cols, factor)),
          row_(static_cast<size_t>(gains.cols) * 3)
    {
    }

    void apply(int y, unsigned char* rgb)
    {
        const float at = std::clamp((static_cast<float>(y) + 0.5F) / static_cast<float>(factor_) - 0.5F,
                                    0.0F,
                                    static_cast<float>(gains_.rows - 1));
        const int upper = std::min(static_cast<int>(at), gains_.rows - 1),
                  lower = std::min(upper + 1, gains_.rows - 1);
        const float share = at - static_cast<float>(upper);
        const float* a = gains_.ptr<float>(upper);
        const float* b = gains_.ptr<float>(lower);
        for (size_t i = 0; i < row_.size(); ++i)
            row_[i] = a[i] + share * (b[i] - a[i]);
        for (const Column& column : columns_) {
            for (int c = 0; c < 3; ++c) {
                const float left = row_.data()[column.left + c];
                const float right = row_.data()[column.right + c];
                const int gain = static_cast<int>(left + column.share * (right - left));
                rgb[c] = curve_[static_cast<size_t>(std::min(255, rgb[c] * gain >> gainBits))];
            }
            rgb += 3;
        }
    }

private:
    const cv::Mat& gains_;
    int factor_;
    const std::array<unsigned char, 256>& curve_;
    std::vector<Column> columns_;
    std::vector<float> row_;
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
        RowFlattener flattener(gains, model.factor(), rgb.cols, how.curve);
        for (int y = rows.start; y < rows.end; ++y)
            flattener.apply(y, rgb.ptr(y));
    });
}

} // namespace mirvak

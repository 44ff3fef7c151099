#include "FrameScaler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "blendColumns() adds three colours in one machine word");

namespace {

constexpr int one = 256; // the weights of a shown pixel sum up to this

/// acc = the weighted sum of `Rows` source rows, on top of what is there unless it is the first group of
/// rows.
template <int Rows>
void addRows(const std::array<const uchar*, 4>& rows,
             const std::uint16_t* weights,
             bool isFirst,
             int count,
             std::uint16_t* acc)
{
    for (int i = 0; i < count; ++i) {
        unsigned sum = isFirst ? one / 2 : acc[i];
        for (int r = 0; r < Rows; ++r)
            sum += unsigned(rows[r][i]) * weights[r];
        acc[i] = std::uint16_t(sum);
    }
}

} // namespace

void FrameScaler::Axis::build(int sourceLength, int shownLength, int shownBegin, int shownEnd)
{
    const double step = double(sourceLength) / shownLength;
    const bool isReducing = sourceLength > shownLength;
    taps = std::min(sourceLength, isReducing ? int(std::ceil(step)) + 1 : 2);
    first.clear();
    weights.clear();
    for (int shown = shownBegin; shown < shownEnd; ++shown) {
        // Reducing covers [from, to); enlarging blends the two neighbours of the pixel's centre.
        const double centre = (shown + 0.5) * step - 0.5;
        const double from = isReducing ? shown * step : centre;
        const double to = isReducing ? from + step : centre + 1.0;
        const int begin = std::clamp(int(std::floor(from)), 0, sourceLength - taps);
        first.push_back(begin);
        int given = 0; // differences of rounded running sums: they sum up to `one` exactly
        for (int tap = 0; tap < taps; ++tap) {
            const bool isLast = tap == taps - 1;
            const double covered =
                isLast ? 1.0 : std::clamp((begin + tap + 1 - from) / (to - from), 0.0, 1.0);
            const int sum = int(std::lround(covered * one));
            weights.push_back(std::uint16_t(sum - given));
            given = sum;
        }
    }
}

const QImage& FrameScaler::scale(const QImage& frame, const QSize& displayed, const QRect& visible)
{
    const bool isPossible =
        !frame.isNull() && !visible.isEmpty() && QRect(QPoint(), displayed).contains(visible);
    if (!isPossible) {
        result_ = QImage();
        return result_;
    }
    const bool isSamePlace = frameSize_ == frame.size() && displayed_ == displayed && visible_ == visible;
    if (isSamePlace && frameKey_ == frame.cacheKey() && !result_.isNull())
        return result_;
    if (!isSamePlace) {
        columns_.build(frame.width(), displayed.width(), visible.left(), visible.right() + 1);
        rows_.build(frame.height(), displayed.height(), visible.top(), visible.bottom() + 1);
        frameSize_ = frame.size();
        displayed_ = displayed;
        visible_ = visible;
    }
    frameKey_ = frame.cacheKey();
    if (result_.size() != visible.size())
        result_ = QImage(visible.size(), QImage::Format_RGB32);
    if (!result_.isNull())
        render(frame.format() == QImage::Format_RGB888 ? frame
                                                       : frame.convertToFormat(QImage::Format_RGB888));
    return result_;
}

void FrameScaler::render(const QImage& rgb)
{
    // One value more than three a pixel: the last pixel is read as four.
    row_.resize(size_t(columns_.sourceEnd() - columns_.sourceBegin()) * 3 + 1);
    for (int shownRow = 0; shownRow < visible_.height(); ++shownRow) {
        blendRows(rgb, shownRow);
        blendColumns(reinterpret_cast<QRgb*>(result_.scanLine(shownRow)));
    }
}

void FrameScaler::blendRows(const QImage& rgb, int shownRow)
{
    const int offset = columns_.sourceBegin() * 3;
    const int count = int(row_.size()) - 1;
    const std::uint16_t* weights = &rows_.weights[size_t(shownRow) * rows_.taps];
    for (int done = 0; done < rows_.taps; done += 4) {
        std::array<const uchar*, 4> rows{};
        const int group = std::min(4, rows_.taps - done);
        for (int r = 0; r < group; ++r)
            rows[r] = rgb.constScanLine(rows_.first[shownRow] + done + r) + offset;
        const bool isFirst = done == 0;
        switch (group) {
        case 1:
            addRows<1>(rows, weights + done, isFirst, count, row_.data());
            break;
        case 2:
            addRows<2>(rows, weights + done, isFirst, count, row_.data());
            break;
        case 3:
            addRows<3>(rows, weights + done, isFirst, count, row_.data());
            break;
        default:
            addRows<4>(rows, weights + done, isFirst, count, row_.data());
            break;
        }
    }
    for (int i = 0; i < count; ++i)
        row_[i] /= one;
}

void FrameScaler::blendColumns(QRgb* line) const
{
    // A pixel is read as one word of four 16-bit lanes: red, green, blue and the next pixel's red, which is
    // ignored. No lane overflows, as 255 * 256 + 128 is less than 65536.
    constexpr std::uint64_t half = 0x0000'0080'0080'0080;
    const std::uint16_t* weight = columns_.weights.data();
    const int begin = columns_.sourceBegin();
    for (const int first : columns_.first) {
        const std::uint16_t* pixel = &row_[size_t(first - begin) * 3];
        std::uint64_t sum = half;
        for (int tap = 0; tap < columns_.taps; ++tap, pixel += 3, ++weight) {
            std::uint64_t lanes;
            std::memcpy(&lanes, pixel, sizeof lanes);
            sum += lanes * *weight;
        }
        *line++ = qRgb(int(sum >> 8 & 0xff), int(sum >> 24 & 0xff), int(sum >> 40 & 0xff));
    }
}

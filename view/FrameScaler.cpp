#include "FrameScaler.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "blendColumns() adds three colours in one machine word");

namespace {

constexpr int one = 256; // the weights of a shown pixel sum up to this

/// Adds the weighted sum of `Rows` source rows; the last group of rows rounds to whole values. Sixteen bits
/// are enough: the weights sum up to 256, so nothing exceeds 255 * 256 + 128.
template <int Rows, bool IsFirst, bool IsLast>
void addRows(const uchar* const* rows, const std::uint16_t* weights, int count, std::uint16_t* acc)
{
    for (int i = 0; i < count; ++i) {
        std::uint16_t sum = IsFirst ? one / 2 : acc[i];
        for (int r = 0; r < Rows; ++r)
            sum = std::uint16_t(sum + rows[r][i] * weights[r]);
        acc[i] = IsLast ? sum / one : sum;
    }
}

constexpr int groupSize = 4;

template <int Rows>
void addGroup(const uchar* const* rows,
              const std::uint16_t* weights,
              bool isFirst,
              bool isLast,
              int count,
              std::uint16_t* acc)
{
    if (isFirst && isLast)
        addRows<Rows, true, true>(rows, weights, count, acc);
    else if (isFirst)
        addRows<Rows, true, false>(rows, weights, count, acc);
    else if (isLast)
        addRows<Rows, false, true>(rows, weights, count, acc);
    else
        addRows<Rows, false, false>(rows, weights, count, acc);
}

template <int Taps> using FixedTaps = std::integral_constant<int, Taps>;

/// Makes a line of shown pixels of a row of blended source pixels; `Taps` is a number or, for the usual ones,
/// a type that carries it, with which the inner loop unrolls. A pixel is read as one word of four 16-bit
/// lanes: red, green, blue and the next pixel's red, which is ignored. No lane overflows, see addRows().
template <class Taps>
void addColumns(Taps taps,
                const std::uint16_t* row,
                int rowBegin,
                const std::vector<int>& first,
                const std::uint16_t* weights,
                QRgb* line)
{
    constexpr std::uint64_t half = 0x0000'0080'0080'0080;
    for (size_t shown = 0; shown < first.size(); ++shown, weights += taps) {
        const std::uint16_t* pixel = row + size_t(first[shown] - rowBegin) * 3;
        std::uint64_t sum = half;
        for (int tap = 0; tap < taps; ++tap) {
            std::uint64_t lanes;
            std::memcpy(&lanes, pixel + tap * 3, sizeof lanes);
            sum += lanes * weights[tap];
        }
        line[shown] = qRgb(int(sum >> 8 & 0xff), int(sum >> 24 & 0xff), int(sum >> 40 & 0xff));
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
    for (int done = 0; done < rows_.taps; done += groupSize) {
        const uchar* rows[groupSize] = {};
        const int group = std::min(groupSize, rows_.taps - done);
        for (int r = 0; r < group; ++r)
            rows[r] = rgb.constScanLine(rows_.first[shownRow] + done + r) + offset;
        const bool isFirst = done == 0;
        const bool isLast = done + group == rows_.taps;
        const std::uint16_t* w = weights + done;
        switch (group) {
        case 1:
            addGroup<1>(rows, w, isFirst, isLast, count, row_.data());
            break;
        case 2:
            addGroup<2>(rows, w, isFirst, isLast, count, row_.data());
            break;
        case 3:
            addGroup<3>(rows, w, isFirst, isLast, count, row_.data());
            break;
        default:
            addGroup<4>(rows, w, isFirst, isLast, count, row_.data());
            break;
        }
    }
}

void FrameScaler::blendColumns(QRgb* line) const
{
    const int begin = columns_.sourceBegin();
    const std::vector<int>& first = columns_.first;
    const std::uint16_t* weights = columns_.weights.data();
    switch (columns_.taps) {
    case 2:
        addColumns(FixedTaps<2>(), row_.data(), begin, first, weights, line);
        break;
    case 3:
        addColumns(FixedTaps<3>(), row_.data(), begin, first, weights, line);
        break;
    case 4:
        addColumns(FixedTaps<4>(), row_.data(), begin, first, weights, line);
        break;
    case 5:
        addColumns(FixedTaps<5>(), row_.data(), begin, first, weights, line);
        break;
    default:
        addColumns(columns_.taps, row_.data(), begin, first, weights, line);
        break;
    }
}

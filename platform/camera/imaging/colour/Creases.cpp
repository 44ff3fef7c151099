#include "Creases.h"

#include "LineFit.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int factor = 4;            // lines are looked for on a smaller copy
constexpr int stripWidth = 8;        // of its pixels along a line, of which the mean is taken
constexpr int beside = 3;            // of its pixels: what a line is compared with
constexpr int surelyInk = 110;       // darkness
constexpr int printBeside = 40;      // darkness: of print, or of its soft rim
constexpr int leastRidge = 3;        // darkness: of a mean, where noise is far less
constexpr double steepest = 0.04;    // a page is straightened
constexpr double leastKnown = 0.4;   // of the strips: of the others print hides the line
constexpr double leastSeen = 0.85;   // of those that are known
constexpr int endStrips = 3;         // a crease begins and ends in them
constexpr size_t mostCreases = 3;    // paper with more is ruled
constexpr int bend = 2;              // of its pixels, by which a crease leaves its line at most
constexpr int fits = 3;              // each with the strips about the line of the one before
constexpr int mostRidge = 20;        // darkness
constexpr double bandShare = 0.0025; // of the longer side: half of a crease's width

struct Crease
{
    double start, rise; ///< row in the first column, and change to the last one; pixels of the smaller copy
    int seen;           ///< strips
};

/// Where a nearly level line could be seen: for each strip across the picture and each row whether there is
/// something darker than what lies above and below, and whether that can be told.
class Strips
{
public:
    explicit Strips(const cv::Mat& dark)
        : rows_(dark.rows), count_(dark.cols / stripWidth), isRidge_(cv::Mat::zeros(count_, rows_, CV_8UC1)),
          isKnown_(cv::Mat::zeros(count_, rows_, CV_8UC1)), ridge_(cv::Mat::zeros(count_, rows_, CV_8UC1))
    {
        for (int y = beside; y < rows_ - beside; ++y) {
            for (int i = 0; i < count_; ++i)
                look(dark, y, i);
        }
        // The line may bend by a pixel.
        cv::dilate(isRidge_, isRidge_, cv::Mat::ones(1, 3, CV_8UC1));
        isRidge_ &= isKnown_;
    }

    std::vector<Crease> creases() const
    {
        std::vector<Crease> found;
        const int most = static_cast<int>(steepest * stripWidth * count_);
        for (int rise = -most; rise <= most; ++rise)
            findAt(rise, found);
        return separate(std::move(found));
    }

private:
    void look(const cv::Mat& dark, int y, int strip)
    {
        const unsigned char *here = dark.ptr(y) + strip * stripWidth,
                            *above = dark.ptr(y - beside) + strip * stripWidth,
                            *below = dark.ptr(y + beside) + strip * stripWidth;
        int known = 0, ridge = 0;
        for (int x = 0; x < stripWidth; ++x) {
            const int around = std::max(above[x], below[x]);
            if (here[x] >= surelyInk || around >= printBeside)
                continue;
            ++known;
            ridge += here[x] - around;
        }
        const bool isKnown = 2 * known >= stripWidth;
        isKnown_.ptr(strip)[y] = isKnown ? 1 : 0;
        isRidge_.ptr(strip)[y] = isKnown && ridge >= leastRidge * known ? 1 : 0;
        ridge_.ptr(strip)[y] = cv::saturate_cast<unsigned char>(ridge / std::max(1, known));
    }

    int shiftOf(int strip, int rise) const
    {
        return cvRound(static_cast<double>(rise) * strip / std::max(1, count_ - 1));
    }

    // All lines of one slope at once: a sum over the strips for each row that they begin in.
    void findAt(int rise, std::vector<Crease>& found) const
    {
        const int from = std::max(0, -rise), to = rows_ - std::max(0, rise);
        const auto length = static_cast<size_t>(std::max(0, to - from));
        std::vector<unsigned short> seen(length), known(length), first(length), last(length);
        for (int i = 0; i < count_; ++i) {
            const unsigned char* ridge = isRidge_.ptr(i) + from + shiftOf(i, rise);
            const unsigned char* told = isKnown_.ptr(i) + from + shiftOf(i, rise);
            for (size_t y = 0; y < length; ++y) {
                seen[y] = static_cast<unsigned short>(seen[y] + ridge[y]);
                known[y] = static_cast<unsigned short>(known[y] + told[y]);
            }
            if (i == endStrips - 1)
                first = seen;
            if (i == count_ - endStrips - 1)
                last = seen;
        }
        for (size_t y = 0; y < length; ++y) {
            const bool isWhole = known[y] >= leastKnown * count_ && seen[y] >= leastSeen * known[y] &&
                                 first[y] > 0 && seen[y] > last[y];
            if (isWhole)
                found.push_back({from + static_cast<double>(y), static_cast<double>(rise), seen[y]});
        }
    }

    /// The best of each bundle of lines.
    std::vector<Crease> separate(std::vector<Crease> found) const
    {
        std::sort(
            found.begin(), found.end(), [](const Crease& a, const Crease& b) { return a.seen > b.seen; });
        std::vector<Crease> kept;
        for (const Crease& one : found) {
            const bool isOther = std::all_of(kept.begin(), kept.end(), [&](const Crease& other) {
                const double middle = one.start + one.rise / 2 - other.start - other.rise / 2;
                return std::abs(middle) > 2 * beside;
            });
            if (isOther)
                kept.push_back(one);
        }
        for (Crease& one : kept)
            for (int i = 0; i < fits; ++i)
                settle(one);
        return kept;
    }

    /// Weighted regression of where the ridge is strongest near the line, over its strips.
    void settle(Crease& crease) const
    {
        LineFit fit;
        for (int i = 0; i < count_; ++i) {
            const double x = static_cast<double>(i) / std::max(1, count_ - 1);
            const int middle = cvRound(crease.start + crease.rise * x);
            for (int y = std::max(0, middle - bend); y <= std::min(rows_ - 1, middle + bend); ++y) {
                // What is much darker than a crease is print.
                fit.add(x, y, isKnown_.ptr(i)[y] ? std::min<int>(ridge_.ptr(i)[y], mostRidge) : 0);
            }
        }
        if (const auto line = fit.line()) {
            crease.rise = line->rise;
            crease.start = line->start;
        }
    }

    int rows_, count_;
    cv::Mat isRidge_, isKnown_; ///< CV_8UC1, 1 or 0, a strip in each row
    cv::Mat ridge_;             ///< likewise, how much darker it is
};

/// Of each column the black that lies wholly beside the line, and is faint.
void erase(cv::Mat& black, const cv::Mat& dark, const Crease& crease)
{
    const int band = bend + static_cast<int>(bandShare * std::max(black.cols, black.rows));
    for (int x = 0; x < black.cols; ++x) {
        const double along = static_cast<double>(x) / std::max(1, black.cols - 1);
        const int middle = cvRound(factor * (crease.start + crease.rise * along + 0.5) - 0.5);
        const int top = std::max(0, middle - band), bottom = std::min(black.rows, middle + band + 1);
        for (int y = top; y < bottom;) {
            int end = y, darkest = 0;
            for (; end < bottom && black.ptr(end)[x]; ++end)
                darkest = std::max<int>(darkest, dark.ptr(end)[x]);
            const bool leaves = (y == top && y > 0 && black.ptr(y - 1)[x]) ||
                                (end == bottom && end < black.rows && black.ptr(end)[x]);
            if (!leaves && darkest < surelyInk) {
                for (int k = y; k < end; ++k)
                    black.ptr(k)[x] = 0;
            }
            y = std::max(end, y + 1);
        }
    }
}

/// None where the paper is ruled.
std::vector<Crease> levelCreases(const cv::Mat& small)
{
    std::vector<Crease> creases = Strips(small).creases();
    if (creases.size() > mostCreases)
        creases.clear();
    return creases;
}

} // namespace

void removeCreases(cv::Mat& black, const cv::Mat& dark)
{
    const cv::Size size(dark.cols / factor, dark.rows / factor);
    const int least = 2 * endStrips * stripWidth;
    if (std::min(size.width, size.height) < least)
        return;
    cv::Mat small;
    cv::resize(dark, small, size, 0, 0, cv::INTER_AREA);
    for (const Crease& crease : levelCreases(small))
        erase(black, dark, crease);
    const std::vector<Crease> upright = levelCreases(small.t());
    if (upright.empty())
        return;
    const cv::Mat turnedDark = dark.t();
    cv::Mat turned = black.t();
    for (const Crease& crease : upright)
        erase(turned, turnedDark, crease);
    cv::transpose(turned, black);
}

} // namespace mirvak

#include "Seals.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr int reducedSide = 900; // px, of the copy in which seals are looked for
constexpr int leastChroma = 45;  // between the brightest and the darkest channel: coloured ink
constexpr int inkChroma = 24;    // the same for its soft edge, within a seal
constexpr double join = 0.012;   // of the page's shorter side, between the strokes of a seal
constexpr double leastSide = 0.05, mostSide = 0.4; // of the page's shorter side
constexpr double mostAspect = 1.7;
constexpr double leastColour = 0.06; // of its box that is coloured
constexpr int directions = 72;
constexpr double closedShare = 0.75; // of the directions in which the ring is met

cv::Mat chromaOf(const cv::Mat& rgb)
{
    std::vector<cv::Mat> planes;
    cv::split(rgb, planes);
    return cv::max(cv::max(planes[0], planes[1]), planes[2]) -
           cv::min(cv::min(planes[0], planes[1]), planes[2]);
}

// How far the colour reaches in each direction from the middle, in half sides of the box.
struct Reach
{
    std::array<double, directions> round{};  // 1 on the ellipse that fits into the box
    std::array<double, directions> square{}; // 1 on the box

    explicit Reach(const cv::Mat& mask)
    {
        for (int y = 0; y < mask.rows; ++y) {
            for (int x = 0; x < mask.cols; ++x) {
                if (mask.at<unsigned char>(y, x) == 0)
                    continue;
                const double dx = (2.0 * x + 1) / mask.cols - 1, dy = (2.0 * y + 1) / mask.rows - 1;
                const auto at =
                    static_cast<size_t>((std::atan2(dy, dx) + CV_PI) / (2 * CV_PI) * directions) % directions;
                round[at] = std::max(round[at], std::hypot(dx, dy));
                square[at] = std::max({square[at], std::abs(dx), std::abs(dy)});
            }
        }
    }
};

// A ring ends on its ellipse in every direction; the corners of a paragraph lie beyond.
bool isRing(const Reach& reach)
{
    const auto on =
        std::count_if(reach.round.begin(), reach.round.end(), [](double r) { return r > 0.82 && r < 1.12; });
    const auto beyond =
        std::count_if(reach.round.begin(), reach.round.end(), [](double r) { return r >= 1.12; });
    return static_cast<double>(on) >= closedShare * directions && beyond * 10 < directions;
}

// Lines along all four sides; the lines of a paragraph leave white between them.
bool isFrame(const cv::Mat& mask)
{
    const int rim = std::max(1, std::min(mask.cols, mask.rows) / 12);
    const auto covered = [](const cv::Mat& strip, int along) {
        cv::Mat line;
        cv::reduce(strip, line, along, cv::REDUCE_MAX);
        return static_cast<double>(cv::countNonZero(line)) / static_cast<double>(line.total());
    };
    return std::min({covered(mask.rowRange(0, rim), 0),
                     covered(mask.rowRange(mask.rows - rim, mask.rows), 0),
                     covered(mask.colRange(0, rim), 1),
                     covered(mask.colRange(mask.cols - rim, mask.cols), 1)}) > 0.85;
}

std::vector<cv::Rect> sealsOf(const cv::Mat& small)
{
    const int side = std::min(small.cols, small.rows);
    const cv::Mat coloured = chromaOf(small) > leastChroma;
    cv::Mat joined;
    const int reach = std::max(1, cvRound(join * side));
    cv::dilate(
        coloured, joined, cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * reach + 1, 2 * reach + 1}));
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(joined, labels, stats, centres, 8, CV_32S);
    std::vector<cv::Rect> seals;
    for (int i = 1; i < count; ++i) {
        const cv::Rect box(stats.at<int>(i, cv::CC_STAT_LEFT),
                           stats.at<int>(i, cv::CC_STAT_TOP),
                           stats.at<int>(i, cv::CC_STAT_WIDTH),
                           stats.at<int>(i, cv::CC_STAT_HEIGHT));
        const int shorter = std::min(box.width, box.height), longer = std::max(box.width, box.height);
        if (shorter < leastSide * side || longer > mostSide * side || longer > mostAspect * shorter)
            continue;
        const cv::Mat own = (labels(box) == i) & coloured(box);
        const cv::Rect tight = cv::boundingRect(own);
        if (tight.area() == 0 || cv::countNonZero(own) < leastColour * tight.area())
            continue;
        const cv::Mat mask = own(tight);
        cv::Mat closed;
        cv::dilate(mask, closed, cv::Mat());
        if (isRing(Reach(mask)) || isFrame(closed))
            seals.push_back(tight + box.tl());
    }
    return seals;
}

// The brightest channel hardly shows the ink; what stays of it is levelled to white.
void takeOut(cv::Mat place)
{
    std::vector<cv::Mat> planes;
    cv::split(place, planes);
    const cv::Mat brightest = cv::max(cv::max(planes[0], planes[1]), planes[2]);
    const cv::Mat chroma = chromaOf(place);
    const cv::Mat ink = chroma > inkChroma;
    // The level of pure ink: of the strongest colour, which no print lies over.
    std::vector<int> levels;
    for (int y = 0; y < place.rows; ++y) {
        for (int x = 0; x < place.cols; ++x) {
            if (chroma.at<unsigned char>(y, x) > leastChroma)
                levels.push_back(brightest.at<unsigned char>(y, x));
        }
    }
    if (levels.empty())
        return;
    const auto low = levels.begin() + static_cast<std::ptrdiff_t>(levels.size() / 4);
    std::nth_element(levels.begin(), low, levels.end());
    cv::Mat freed;
    brightest.convertTo(freed, CV_8U, 255.0 / std::max(1, *low));
    cv::Mat grey;
    cv::cvtColor(place, grey, cv::COLOR_RGB2GRAY);
    freed.copyTo(grey, ink);
    cv::cvtColor(grey, place, cv::COLOR_GRAY2RGB);
}

} // namespace

bool takeOutSeals(cv::Mat& rgb)
{
    // A whole number is a third of the work of any other; at most so many pixels are left out at the edges.
    const int times = (std::max(rgb.cols, rgb.rows) + reducedSide - 1) / reducedSide;
    const double factor = 1.0 / times;
    const cv::Size reduced(rgb.cols / times, rgb.rows / times);
    cv::Mat small;
    cv::resize(rgb(cv::Rect({0, 0}, reduced * times)), small, reduced, 0, 0, cv::INTER_AREA);
    const std::vector<cv::Rect> seals = sealsOf(small);
    for (const cv::Rect& seal : seals) {
        const int rim = cvRound(0.04 * seal.width / factor) + 2;
        const cv::Rect place(cvRound(seal.x / factor) - rim,
                             cvRound(seal.y / factor) - rim,
                             cvRound(seal.width / factor) + 2 * rim,
                             cvRound(seal.height / factor) + 2 * rim);
        takeOut(rgb(place & cv::Rect({0, 0}, rgb.size())));
    }
    return !seals.empty();
}

} // namespace mirvak

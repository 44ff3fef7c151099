#include "OutlineWatch.h"

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr int longestAge = 2;                       // frames that repeat an answer
constexpr std::chrono::milliseconds nextFrame(150); // at most, after the frame before it
constexpr std::chrono::milliseconds fastPause(95);  // of fast cameras' frames, between searches at least
constexpr int columns = 32, rows = 24;              // of the grid over the picture
constexpr int along = 24;                           // samples of each side, on each hand
constexpr double besideShare = 1 / 200.; // of the longer side of the picture: beside an edge, not on it
constexpr int patch = 3;                 // pixels each way: the mean of them has little noise
constexpr int sameLevel = 9;             // levels
constexpr double mostChanged = 0.01, mostChangedBeside = 0.05; // of the samples: what noise may change

cv::Vec3i sumAt(const cv::Mat& rgb, const cv::Point& place)
{
    cv::Vec3i sum;
    for (int y = 0; y < patch; ++y) {
        const cv::Vec3b* row = rgb.ptr<cv::Vec3b>(place.y + y) + place.x;
        for (int x = 0; x < patch; ++x)
            sum += cv::Vec3i(row[x]);
    }
    return sum;
}

template <class Samples> double shareChanged(const Samples& samples, const cv::Mat& rgb)
{
    const auto changed = std::count_if(samples.begin(), samples.end(), [&](const auto& sample) {
        const cv::Vec3i change = sumAt(rgb, sample.place) - sample.seen;
        return std::max({std::abs(change[0]), std::abs(change[1]), std::abs(change[2])}) >
               sameLevel * patch * patch;
    });
    return static_cast<double>(changed) / static_cast<double>(std::max<size_t>(1, samples.size()));
}

} // namespace

std::optional<Outline> OutlineWatch::find(const cv::Mat& rgb, std::optional<Time> taken)
{
    if (age_ < longestAge && rgb.size() == size_ && (followsTheSearched(taken) || looksTheSame(rgb))) {
        ++age_;
        return page_;
    }
    age_ = 0;
    size_ = cv::Size(); // what throws leaves nothing to repeat
    page_ = finder_.find(rgb);
    choosePlaces(rgb);
    size_ = rgb.size();
    searchedAt_ = taken;
    return page_;
}

bool OutlineWatch::followsTheSearched(std::optional<Time> taken) const
{
    return taken && searchedAt_ && *taken - *searchedAt_ < (age_ == 0 ? nextFrame : fastPause);
}

void OutlineWatch::choosePlaces(const cv::Mat& rgb)
{
    everywhere_.clear();
    beside_.clear();
    if (rgb.cols < patch || rgb.rows < patch)
        return;
    const auto look = [&](std::vector<Sample>& samples, const cv::Point2d& place) {
        const cv::Point at(cvRound(place.x) - patch / 2, cvRound(place.y) - patch / 2);
        if (at.x >= 0 && at.y >= 0 && at.x + patch <= rgb.cols && at.y + patch <= rgb.rows)
            samples.push_back({at, sumAt(rgb, at)});
    };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            look(everywhere_, {(column + 0.5) * rgb.cols / columns, (row + 0.5) * rgb.rows / rows});
    }
    const double away = besideShare * std::max(rgb.cols, rgb.rows);
    for (size_t i = 0; page_ && i < 4; ++i) {
        const cv::Point2d& from = page_->corners[i];
        const cv::Point2d way = page_->corners[(i + 1) % 4] - from;
        const cv::Point2d across = cv::Point2d(-way.y, way.x) * (away / std::max(1.0, cv::norm(way)));
        for (int k = 0; k < along; ++k) {
            const cv::Point2d place = from + way * ((k + 0.5) / along);
            look(beside_, place + across);
            look(beside_, place - across);
        }
    }
}

bool OutlineWatch::looksTheSame(const cv::Mat& rgb) const
{
    return !everywhere_.empty() && shareChanged(beside_, rgb) <= mostChangedBeside &&
           shareChanged(everywhere_, rgb) <= mostChanged;
}

} // namespace mirvak

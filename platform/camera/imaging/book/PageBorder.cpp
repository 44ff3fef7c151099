#include "PageBorder.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace mirvak {

namespace {

constexpr float tintTolerance = 0.035F;            // of the share of a colour in the sum
constexpr float darkest = 0.42F, brightest = 1.5F; // of the paper's level, in a shadow and in a light
constexpr float darkestPaper = 40;                 // levels
constexpr float leastStep = 0.03F;                 // of the paper's level: what is an edge at one place
constexpr double wholeLine = 0.8;                  // of the places across a page
constexpr int apart = 2;                           // pixels on both sides of an edge

// The view with the spine at the left, and what is paper in it.
class BorderSearch
{
public:
    BorderSearch(const FlatView& view, bool isRight, const cv::Rect& text) : text_(text)
    {
        cv::Mat colours = view.colours, seen = view.seen;
        if (!isRight) {
            cv::flip(colours, colours, 1);
            cv::flip(seen, seen, 1);
        }
        seen_ = seen;
        tell(colours);
    }

    cv::Rect run()
    {
        const int width = paper_.cols, height = paper_.rows;
        int outer = end(true, text_.y, text_.y + text_.height, text_.x + text_.width, 1, width, outerSeen);
        int top = 0, bottom = height;
        for (int pass = 0; pass < 2; ++pass) {
            const int from = outer * 8 / 100, to = std::max(from + 4, outer * 96 / 100);
            top = end(false, from, to, text_.y, -1, -1, topSeen);
            bottom = end(false, from, to, text_.y + text_.height, 1, height, bottomSeen);
            const int inset = (bottom - top) * 4 / 100;
            outer = end(true, top + inset, bottom - inset, text_.x + text_.width, 1, width, outerSeen);
        }
        return {0, top + 1, std::max(1, outer), std::max(1, bottom - top - 1)};
    }

    /// Where each place across has its edge: (along, at).
    std::vector<cv::Point2d> points(bool isColumn, int from, int to, int at, int reach) const
    {
        std::vector<cv::Point2d> found;
        const cv::Mat& steps = isColumn ? acrossSteps_ : downSteps_;
        double sign = 0;
        for (int i = from; i < to; ++i)
            for (int j = std::max(0, at - 1); j <= std::min((isColumn ? steps.cols : steps.rows) - 1, at + 1);
                 ++j)
                sign += isColumn ? steps.at<float>(i, j) : steps.at<float>(j, i);
        sign = sign < 0 ? -1 : 1;
        const int limit = isColumn ? steps.cols : steps.rows;
        for (int i = from; i < to; i += 2) {
            const auto step = [&](int j) {
                return sign * (isColumn ? steps.at<float>(i, j) : steps.at<float>(j, i));
            };
            int best = -1;
            double most = leastStep;
            for (int j = std::max(1, at - reach); j < std::min(limit - 1, at + reach + 1); ++j) {
                if (step(j) > most) {
                    most = step(j);
                    best = j;
                }
            }
            if (best < 0)
                continue;
            const double before = step(best - 1), after = step(best + 1), bend = before - 2 * most + after;
            const double part = bend < -1e-6 ? std::clamp(0.5 * (before - after) / bend, -0.5, 0.5) : 0;
            found.emplace_back(i, best + part);
        }
        return found;
    }

    double paperIn(const cv::Rect& area) const
    {
        return cv::mean(paper_(area & cv::Rect({}, paper_.size())))[0] / 255;
    }

    bool isBright() const { return paperLevel_ > darkestPaper; }

    bool topSeen = false, bottomSeen = false, outerSeen = false;

private:
    void tell(const cv::Mat& colours)
    {
        std::array<cv::Mat, 3> planes;
        cv::split(colours, planes.data());
        const cv::Vec3f paper = paperOf(planes);
        const float sum = std::max(1.0F, paper[0] + paper[1] + paper[2]);
        paperLevel_ = sum / 3;
        paper_.create(colours.size(), CV_8UC1);
        cv::Mat level(colours.size(), CV_32F);
        for (int y = 0; y < colours.rows; ++y) {
            for (int x = 0; x < colours.cols; ++x) {
                const cv::Vec3b& c = colours.at<cv::Vec3b>(y, x);
                const float all = std::max(1.0F, static_cast<float>(c[0] + c[1] + c[2]));
                const bool tinted = std::abs(c[0] / all - paper[0] / sum) > tintTolerance ||
                                    std::abs(c[2] / all - paper[2] / sum) > tintTolerance;
                paper_.at<unsigned char>(y, x) =
                    !tinted && all > darkest * sum && all < brightest * sum ? 255 : 0;
                level.at<float>(y, x) = all / sum;
            }
        }
        const cv::Mat kernel = (cv::Mat_<float>(1, 2 * apart + 1) << -0.5, -0.5, 0, 0.5, 0.5);
        cv::filter2D(level, acrossSteps_, CV_32F, kernel);
        cv::filter2D(level, downSteps_, CV_32F, kernel.t());
    }

    cv::Vec3f paperOf(const std::array<cv::Mat, 3>& planes) const
    {
        // The margin at the spine is paper even beside a picture.
        const cv::Size size = planes[0].size();
        const cv::Rect margin(size.width * 3 / 100, size.height / 4, size.width * 42 / 100, size.height / 2);
        const cv::Rect known = text_ | margin;
        cv::Vec3f paper;
        for (size_t c = 0; c < 3; ++c) {
            std::array<int, 256> histogram{};
            int count = 0;
            const cv::Mat part = planes[c](known);
            for (int y = 0; y < part.rows; ++y)
                for (int x = 0; x < part.cols; ++x, ++count)
                    ++histogram[part.at<unsigned char>(y, x)];
            int level = 255;
            for (int above = 0;
                 level > 0 && (above += histogram[static_cast<size_t>(level)]) < count * 12 / 100;)
                --level;
            paper[static_cast<int>(c)] = static_cast<float>(level);
        }
        return paper;
    }

    // Outward from the print to where the paper ends for good: a picture has paper beyond it. A line shortly
    // before that end parts the page from the leaves below it; without an end, the last line parts it from a
    // desk of its own colour.
    int end(bool isColumn, int from, int to, int start, int step, int stop, bool& wasSeen) const
    {
        const int length = isColumn ? paper_.cols : paper_.rows;
        const int lasting = std::max(4, length / 60), clear = std::max(3, lasting / 2);
        const int leaves = std::max(4, length / 25);
        std::vector<int> lines;
        int at = start + step * clear, drop = -1;
        for (; at != stop && at >= 0 && at < length; at += step) {
            if (share(isColumn, from, to, at, seen_) < 0.5)
                break;
            if (isLine(isColumn, from, to, at))
                lines.push_back(at);
            if (paperFrom(isColumn, from, to, at, step, lasting) >= 0.4)
                continue;
            const int resumed = resumes(isColumn, from, to, at, step, lasting);
            if (resumed < 0 || std::abs(resumed - at) < leaves) {
                drop = at;
                break;
            }
            at = resumed;
            lines.clear();
        }
        wasSeen = drop >= 0 || !lines.empty();
        if (drop >= 0) {
            const auto line = std::find_if(
                lines.begin(), lines.end(), [&](int l) { return std::abs(drop - l) <= leaves; });
            return strongest(isColumn, from, to, line == lines.end() ? drop : *line, step);
        }
        if (!lines.empty())
            return strongest(isColumn, from, to, lines.back(), step);
        return at < 0 || at >= length ? stop : at;
    }

    double paperFrom(bool isColumn, int from, int to, int at, int step, int lasting) const
    {
        double paper = 0;
        for (int i = 0; i < lasting; ++i)
            paper += share(isColumn, from, to, at + i * step, paper_);
        return paper / lasting;
    }

    // Where there is paper again, or -1.
    int resumes(bool isColumn, int from, int to, int at, int step, int lasting) const
    {
        const int length = isColumn ? paper_.cols : paper_.rows;
        for (; at >= 0 && at < length; at += step) {
            if (share(isColumn, from, to, at, seen_) < 0.5)
                return -1;
            if (paperFrom(isColumn, from, to, at, step, lasting) > 0.75)
                return at;
        }
        return -1;
    }

    static double share(bool isColumn, int from, int to, int at, const cv::Mat& mask)
    {
        at = std::clamp(at, 0, (isColumn ? mask.cols : mask.rows) - 1);
        int count = 0;
        for (int i = from; i < to; ++i)
            count += (isColumn ? mask.at<unsigned char>(i, at) : mask.at<unsigned char>(at, i)) > 0;
        return static_cast<double>(count) / std::max(1, to - from);
    }

    double coverage(bool isColumn, int from, int to, int at, double& mean) const
    {
        const cv::Mat& steps = isColumn ? acrossSteps_ : downSteps_;
        int up = 0, down = 0;
        mean = 0;
        at = std::clamp(at, 0, (isColumn ? steps.cols : steps.rows) - 1);
        for (int i = from; i < to; ++i) {
            const float step = isColumn ? steps.at<float>(i, at) : steps.at<float>(at, i);
            up += step > leastStep;
            down += step < -leastStep;
            mean += std::clamp(step, -0.3F, 0.3F);
        }
        mean = std::abs(mean) / std::max(1, to - from);
        return static_cast<double>(std::max(up, down)) / std::max(1, to - from);
    }

    bool isLine(bool isColumn, int from, int to, int at) const
    {
        double mean = 0;
        return coverage(isColumn, from, to, at, mean) > wholeLine;
    }

    int strongest(bool isColumn, int from, int to, int at, int step) const
    {
        int best = at;
        double most = 0;
        for (int i = -6; i <= 6; ++i) {
            double mean = 0;
            coverage(isColumn, from, to, at + i * step, mean);
            if (mean > most) {
                most = mean;
                best = at + i * step;
            }
        }
        return std::clamp(best, 0, (isColumn ? paper_.cols : paper_.rows) - 1);
    }

    cv::Rect text_;
    float paperLevel_ = 0;
    cv::Mat seen_, paper_, acrossSteps_, downSteps_;
};

Track trackOf(const std::vector<cv::Point2d>& pixels,
              bool isColumn,
              const FlatView& view,
              const CylinderModel& model,
              bool isRight)
{
    Track track;
    track.isRight = isRight;
    track.isRuling = isColumn;
    for (const cv::Point2d& point : pixels) {
        cv::Point2d pixel = isColumn ? cv::Point2d(point.y, point.x) : point;
        if (!isRight)
            pixel.x = view.colours.cols - 1 - pixel.x;
        track.points.push_back(model.toFrame(view.toFlat(pixel), isRight));
    }
    return track;
}

} // namespace

PageBorder
findBorder(const FlatView& view, const CylinderModel& model, bool isRight, const cv::Rect2d& text, int reach)
{
    const cv::Size size = view.colours.size();
    cv::Rect inside;
    if (text.empty()) {
        inside = {
            size.width * 15 / 100, size.height * 35 / 100, size.width * 25 / 100, size.height * 30 / 100};
    } else {
        cv::Point2d first = view.toPixel(text.tl()), last = view.toPixel(text.br());
        if (!isRight) {
            first.x = size.width - 1 - first.x;
            last.x = size.width - 1 - last.x;
            std::swap(first.x, last.x);
        }
        inside = cv::Rect(cv::Point(first), cv::Point(last));
    }
    inside &= cv::Rect({}, size);
    if (inside.width < 2 || inside.height < 2)
        return {};
    BorderSearch search(view, isRight, inside);
    const cv::Rect found = search.run();
    PageBorder border;
    border.hasTop = search.topSeen;
    border.hasBottom = search.bottomSeen;
    border.hasOuter = search.outerSeen;
    border.isBright = search.isBright();
    border.paper = search.paperIn(found);
    const double left = found.x / view.scale, width = found.width / view.scale;
    border.area = {isRight ? view.area.x + left : -left - width,
                   view.area.y + found.y / view.scale,
                   width,
                   found.height / view.scale};
    const int from = found.width * 1 / 100, to = found.width * 97 / 100;
    if (border.hasTop)
        border.edges.push_back(
            trackOf(search.points(false, from, to, found.y - 1, reach), false, view, model, isRight));
    if (border.hasBottom)
        border.edges.push_back(trackOf(
            search.points(false, from, to, found.y + found.height, reach), false, view, model, isRight));
    if (border.hasOuter)
        border.edges.push_back(trackOf(
            search.points(
                true, found.y + found.height / 20, found.y + found.height * 19 / 20, found.width, reach),
            true,
            view,
            model,
            isRight));
    return border;
}

} // namespace mirvak

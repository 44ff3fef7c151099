#include "PageBorder.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirvak {

namespace {

constexpr float tintTolerance = 0.035F;            // of the share of a colour in the sum
constexpr float darkest = 0.45F, brightest = 1.5F; // of the paper's level, in a shadow and in a light
constexpr float darkestPaper = 40;                 // levels
constexpr float leastStep = 0.025F;                // of the paper's level: what is an edge at one place
constexpr double wholeLine = 0.7;                  // of the places across a page
constexpr double leastChange = 0.85;               // of the light, between the page and a desk
constexpr int apart = 2;                           // pixels on both sides of an edge

// The view with the spine at the left, and what is paper in it.
class BorderSearch
{
public:
    BorderSearch(const FlatView& view, bool isRight, const cv::Rect& text, bool hasSpine)
        : text_(text), hasSpine_(hasSpine)
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
        const cv::Vec3f paper = paperOf(colours);
        const float sum = std::max(1.0F, paper[0] + paper[1] + paper[2]);
        paperLevel_ = sum / 3;
        paper_.create(colours.size(), CV_8UC1);
        level_.create(colours.size(), CV_32F);
        for (int y = 0; y < colours.rows; ++y) {
            for (int x = 0; x < colours.cols; ++x) {
                const cv::Vec3b& c = colours.at<cv::Vec3b>(y, x);
                const float all = std::max(1.0F, static_cast<float>(c[0] + c[1] + c[2]));
                paper_.at<unsigned char>(y, x) =
                    isTinted(c, paper) && all > darkest * sum && all < brightest * sum ? 255 : 0;
                level_.at<float>(y, x) = all / sum;
            }
        }
        const cv::Mat kernel = (cv::Mat_<float>(1, 2 * apart + 1) << -0.5, -0.5, 0, 0.5, 0.5);
        cv::filter2D(level_, acrossSteps_, CV_32F, kernel);
        cv::filter2D(level_, downSteps_, CV_32F, kernel.t());
    }

    // The margin at the spine is paper, in its shadow; better lit paper has the same tint.
    cv::Vec3f paperOf(const cv::Mat& colours) const
    {
        const cv::Size size = colours.size();
        const int first = size.width * 3 / 100, breadth = std::max(2, size.width * 5 / 100);
        const cv::Rect margin(first, text_.y, breadth, text_.height);
        const cv::Vec3f tint = brightPaper(colours, hasSpine_ ? margin : text_, nullptr);
        const cv::Rect large(first, size.height / 4, size.width * 42 / 100, size.height / 2);
        return brightPaper(colours, text_ | large, &tint);
    }

    // The quantile of brightness that print leaves alone, of what has that tint.
    static cv::Vec3f brightPaper(const cv::Mat& colours, cv::Rect area, const cv::Vec3f* tint)
    {
        area &= cv::Rect({}, colours.size());
        std::vector<cv::Vec3b> found;
        for (int y = area.y; y < area.y + area.height; ++y) {
            for (int x = area.x; x < area.x + area.width; ++x) {
                const cv::Vec3b& c = colours.at<cv::Vec3b>(y, x);
                if (!tint || isTinted(c, *tint))
                    found.push_back(c);
            }
        }
        if (found.empty())
            return tint ? *tint : cv::Vec3f(255, 255, 255);
        const auto at = found.begin() + static_cast<long>(found.size() * 8 / 10);
        std::nth_element(found.begin(), at, found.end(), [](const cv::Vec3b& a, const cv::Vec3b& b) {
            return a[0] + a[1] + a[2] < b[0] + b[1] + b[2];
        });
        return {static_cast<float>((*at)[0]), static_cast<float>((*at)[1]), static_cast<float>((*at)[2])};
    }

    static bool isTinted(const cv::Vec3b& c, const cv::Vec3f& paper)
    {
        const float sum = std::max(1.0F, paper[0] + paper[1] + paper[2]);
        const float all = std::max(1.0F, static_cast<float>(c[0] + c[1] + c[2]));
        return std::abs(c[0] / all - paper[0] / sum) <= tintTolerance &&
               std::abs(c[2] / all - paper[2] / sum) <= tintTolerance;
    }

    // Outward from the print to where the paper ends for good: a picture has paper beyond it. A line shortly
    // before that end parts the page from the leaves below it; without an end, the last line parts it from a
    // desk of its own colour.
    int end(bool isColumn, int from, int to, int start, int step, int stop, bool& wasSeen) const
    {
        const int length = isColumn ? paper_.cols : paper_.rows;
        const int lasting = std::max(4, length / 60), clear = std::max(3, lasting / 2);
        const int leaves = std::max(4, length / 50), cover = 2 * leaves;
        bool metPaper = false;
        std::vector<int> lines;
        int at = start + step * clear, drop = -1;
        for (; at != stop && at >= 0 && at < length; at += step) {
            if (share(isColumn, from, to, at, seen_) < 0.5)
                break;
            if (isLine(isColumn, from, to, at))
                lines.push_back(at);
            const bool changes = !lines.empty() && lines.back() == at &&
                                 paperFrom(isColumn, from, to, at - 3 * step, -step, lasting) > 0.6 &&
                                 changesLevel(isColumn, from, to, at, step, lasting);
            const double paper = paperFrom(isColumn, from, to, at, step, lasting);
            metPaper |= paper > 0.75;
            if (!changes && paper >= 0.4)
                continue;
            if (changes) {
                drop = at;
                break;
            }
            const int resumed = resumes(isColumn, from, to, at, step, lasting);
            if (resumed < 0 || (metPaper && std::abs(resumed - at) < cover)) {
                drop = at;
                break;
            }
            at = resumed;
            lines.clear();
        }
        wasSeen = drop >= 0 || !lines.empty();
        if (drop >= 0) {
            const auto line =
                std::find_if(lines.begin(), lines.end(), [&](int l) { return std::abs(drop - l) <= leaves; });
            return strongest(isColumn, from, to, line == lines.end() ? drop : *line, step);
        }
        if (!lines.empty())
            return strongest(isColumn, from, to, lines.back(), step);
        return at < 0 || at >= length ? stop : at;
    }

    // Whether it is darker or brighter for good beyond a line; a soft shadow has no line.
    bool changesLevel(bool isColumn, int from, int to, int at, int step, int lasting) const
    {
        const double inside = levelFrom(isColumn, from, to, at - 3 * step, -step, lasting);
        const double outside = levelFrom(isColumn, from, to, at + 3 * step, step, 3 * lasting);
        return outside < leastChange * inside || inside < leastChange * outside;
    }

    double levelFrom(bool isColumn, int from, int to, int at, int step, int lasting) const
    {
        const int length = isColumn ? level_.cols : level_.rows;
        const int last = std::clamp(at + step * lasting, 0, length - 1);
        const int first = std::clamp(std::min(at, last), 0, length - 1);
        const int after = std::clamp(std::max(at, last) + 1, first + 1, length);
        const cv::Rect part = isColumn ? cv::Rect(first, from, after - first, to - from)
                                       : cv::Rect(from, first, to - from, after - first);
        return cv::mean(level_(part))[0];
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
    bool hasSpine_;
    float paperLevel_ = 0;
    cv::Mat seen_, paper_, level_, acrossSteps_, downSteps_;
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

PageBorder findBorder(const FlatView& view,
                      const CylinderModel& model,
                      bool isRight,
                      bool hasSpine,
                      const cv::Rect2d& text,
                      int reach)
{
    const cv::Size size = view.colours.size();
    cv::Rect inside;
    if (text.empty()) {
        const int middle = cvRound(view.toPixel({0, 0}).y), high = size.height * 16 / 100;
        inside = {size.width * (hasSpine ? 15 : 38) / 100, middle - high / 2, size.width * 24 / 100, high};
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
    BorderSearch search(view, isRight, inside, hasSpine);
    cv::Rect found = search.run();
    if (!hasSpine) { // the other end of the only page
        const cv::Rect mirrored(size.width - inside.x - inside.width, inside.y, inside.width, inside.height);
        const int reached = BorderSearch(view, false, mirrored, false).run().width;
        found.x = std::min(size.width - reached, inside.x);
        found.width -= found.x;
    }
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
    const int from = found.x + found.width / 100, to = found.x + found.width * 97 / 100;
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

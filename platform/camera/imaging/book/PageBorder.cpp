#include "PageBorder.h"

#include "PaperEnd.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr float darkestPaper = 40; // levels

cv::Mat mirrored(const cv::Mat& picture, bool isRight)
{
    cv::Mat turned = picture;
    if (!isRight)
        cv::flip(picture, turned, 1);
    return turned;
}

// The view with the spine at the left: where its page ends below, above and outward.
class BorderSearch
{
public:
    BorderSearch(const FlatView& view, bool isRight, const cv::Rect& text, bool hasSpine)
        : BorderSearch(mirrored(view.seen, isRight),
                       lookOfPaper(mirrored(view.colours, isRight), text, hasSpine),
                       text)
    {
    }

    cv::Rect run()
    {
        const int width = rows_.columns(), height = rows_.rows();
        const int textRight = text_.x + text_.width, textBottom = text_.y + text_.height;
        PaperEnd::Found outer = columns_.find({text_.y, textBottom}, textRight, 1, width);
        PaperEnd::Found top{0, false}, bottom{height, false};
        for (int pass = 0; pass < 2; ++pass) {
            const int from = outer.row * 8 / 100;
            const PaperEnd::Span across{from, std::max(from + 4, outer.row * 96 / 100)};
            top = rows_.find(across, text_.y, -1, -1);
            bottom = rows_.find(across, textBottom, 1, height);
            const int inset = (bottom.row - top.row) * 4 / 100;
            outer = columns_.find({top.row + inset, bottom.row - inset}, textRight, 1, width);
        }
        topSeen = top.wasSeen;
        bottomSeen = bottom.wasSeen;
        outerSeen = outer.wasSeen;
        return {0, top.row + 1, std::max(1, outer.row), std::max(1, bottom.row - top.row - 1)};
    }

    const PaperEnd& rows() const { return rows_; }
    const PaperEnd& columns() const { return columns_; } ///< its points have x down and y across the view

    double paperIn(const cv::Rect& area) const
    {
        return cv::mean(look_.paper(area & cv::Rect({}, look_.paper.size())))[0] / 255;
    }

    bool isBright() const { return look_.paperLevel > darkestPaper; }

    bool topSeen = false, bottomSeen = false, outerSeen = false;

private:
    BorderSearch(const cv::Mat& seen, PaperLook look, const cv::Rect& text)
        : text_(text), look_(std::move(look)), rows_(seen, look_.paper, look_.level),
          columns_(seen.t(), look_.paper.t(), look_.level.t())
    {
    }

    cv::Rect text_;
    PaperLook look_;
    PaperEnd rows_, columns_;
};

// From pixels of the view with the spine at the left to the frame.
class BorderTracks
{
public:
    BorderTracks(const FlatView& view, const CylinderModel& model, bool isRight)
        : view_(view), model_(model), isRight_(isRight)
    {
    }

    Track alongRow(const std::vector<cv::Point2d>& pixels) const { return track(pixels, false); }
    Track alongColumn(std::vector<cv::Point2d> pixels) const
    {
        for (cv::Point2d& pixel : pixels)
            std::swap(pixel.x, pixel.y);
        return track(pixels, true);
    }

private:
    Track track(const std::vector<cv::Point2d>& pixels, bool isRuling) const
    {
        Track track;
        track.isRight = isRight_;
        track.isRuling = isRuling;
        for (cv::Point2d pixel : pixels) {
            if (!isRight_)
                pixel.x = view_.colours.cols - 1 - pixel.x;
            track.points.push_back(model_.toFrame(view_.toFlat(pixel), isRight_));
        }
        return track;
    }

    const FlatView& view_;
    const CylinderModel& model_;
    bool isRight_;
};

// Pixels of the view with the spine at the left that are certainly page.
cv::Rect certainlyPage(const FlatView& view, bool isRight, bool hasSpine, const cv::Rect2d& text)
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
    return inside & cv::Rect({}, size);
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
    const cv::Rect inside = certainlyPage(view, isRight, hasSpine, text);
    if (inside.width < 2 || inside.height < 2)
        return {};
    BorderSearch search(view, isRight, inside, hasSpine);
    cv::Rect found = search.run();
    if (!hasSpine) { // the other end of the only page
        const cv::Rect turned(size.width - inside.x - inside.width, inside.y, inside.width, inside.height);
        const int reached = BorderSearch(view, false, turned, false).run().width;
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
    const BorderTracks tracks(view, model, isRight);
    const PaperEnd::Span across{found.x + found.width / 100, found.x + found.width * 97 / 100};
    if (border.hasTop)
        border.edges.push_back(tracks.alongRow(search.rows().edge(across, found.y - 1, reach)));
    if (border.hasBottom)
        border.edges.push_back(tracks.alongRow(search.rows().edge(across, found.y + found.height, reach)));
    if (border.hasOuter) {
        const PaperEnd::Span down{found.y + found.height / 20, found.y + found.height * 19 / 20};
        border.edges.push_back(tracks.alongColumn(search.columns().edge(down, found.width, reach)));
    }
    return border;
}

} // namespace mirvak

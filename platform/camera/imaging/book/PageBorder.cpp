#include "PageBorder.h"

#include "BorderSearch.h"

#include <algorithm>

namespace mirvak {

namespace {

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

PageBorder describe(const BorderSearch& search,
                    const cv::Rect& found,
                    const FlatView& view,
                    const CylinderModel& model,
                    bool isRight,
                    int reach)
{
    PageBorder border;
    border.hasTop = search.top().wasSeen;
    border.hasBottom = search.bottom().wasSeen;
    border.hasOuter = search.outer().wasSeen;
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
    search.run();
    cv::Rect found = search.found();
    if (!hasSpine) { // the other end of the only page
        const cv::Rect turned(size.width - inside.x - inside.width, inside.y, inside.width, inside.height);
        BorderSearch other(view, false, turned, false);
        other.run();
        found.x = std::min(size.width - other.found().width, inside.x);
        found.width -= found.x;
    }
    return describe(search, found, view, model, isRight, reach);
}

std::optional<PageBorder> findPicture(
    const FlatView& view, const CylinderModel& model, bool isRight, const cv::Rect2d& other, int reach)
{
    const cv::Rect inside = certainlyPage(view, isRight, true, {});
    const cv::Rect page(0,
                        cvRound((other.y - view.area.y) * view.scale),
                        cvRound(other.width * view.scale),
                        cvRound(other.height * view.scale));
    if (inside.width < 2 || inside.height < 2 || (page & cv::Rect({}, view.colours.size())) != page)
        return std::nullopt;
    BorderSearch search(view, isRight, inside, true);
    if (!search.runPicture(page))
        return std::nullopt;
    PageBorder border = describe(search, search.found(), view, model, isRight, reach);
    border.isPicture = true;
    return border;
}

} // namespace mirvak

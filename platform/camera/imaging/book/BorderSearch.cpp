#include "BorderSearch.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr float darkestPaper = 40; // levels
constexpr int leastPicture = 16;   // parts of the view: of this share is a picture at the page's end

cv::Mat mirrored(const cv::Mat& picture, bool isRight)
{
    cv::Mat turned = picture;
    if (!isRight)
        cv::flip(picture, turned, 1);
    return turned;
}

// What lies at the corners is of the other sides.
PaperEnd::Span within(const PaperEnd::Span& side)
{
    const int inset = (side.to - side.from) * 4 / 100;
    return {side.from + inset, std::max(side.from + inset + 4, side.to - inset)};
}

// Takes an end to where the sides that cross it end, if there is an end.
void follow(PaperEnd::Found& end,
            int step,
            const PaperEnd& lines,
            const PaperEnd::Span& span,
            const std::vector<int>& sides)
{
    int further = lines.rows();
    for (const int side : sides)
        further = std::min(further, step * (side - end.row));
    if (!end.wasSeen || sides.empty() || further <= lines.rows() / leastPicture)
        return;
    const int row = lines.strongest(span, end.row + step * further);
    if (lines.hasSide(row, step, span))
        end.row = row;
}

PaperEnd::Found sideNear(const PaperEnd& lines, int row, int outward, const PaperEnd::Span& span)
{
    const bool isThere = lines.hasSide(row, outward, span);
    return {isThere ? lines.strongest(span, row) : row, isThere};
}

} // namespace

BorderSearch::BorderSearch(const FlatView& view, bool isRight, const cv::Rect& text, bool hasSpine)
    : BorderSearch(
          mirrored(view.seen, isRight), lookOfPaper(mirrored(view.colours, isRight), text, hasSpine), text)
{
}

BorderSearch::BorderSearch(const cv::Mat& seen, PaperLook look, const cv::Rect& text)
    : text_(text), look_(std::move(look)), rows_(seen, look_.paper, look_.level),
      columns_(seen.t(), look_.paper.t(), look_.level.t())
{
}

PaperEnd::Span BorderSearch::across() const
{
    return within({outer_.row * 4 / 100, outer_.row});
}

PaperEnd::Span BorderSearch::down() const
{
    return within({top_.row, bottom_.row});
}

void BorderSearch::run()
{
    lookFromPrint();
    for (int pass = 0; pass < 2; ++pass)
        followSides();
}

bool BorderSearch::runPicture(const cv::Rect& page)
{
    const PaperEnd::Span wide = within({page.x, page.br().x}), high = within({page.y, page.br().y});
    top_ = sideNear(rows_, page.y - 1, -1, wide);
    bottom_ = sideNear(rows_, page.br().y, 1, wide);
    outer_ = sideNear(columns_, page.br().x, 1, high);
    return top_.wasSeen + bottom_.wasSeen + outer_.wasSeen >= 2;
}

cv::Rect BorderSearch::found() const
{
    return {0, top_.row + 1, std::max(1, outer_.row), std::max(1, bottom_.row - top_.row - 1)};
}

double BorderSearch::paperIn(const cv::Rect& area) const
{
    return cv::mean(look_.paper(area & cv::Rect({}, look_.paper.size())))[0] / 255;
}

bool BorderSearch::isBright() const
{
    return look_.paperLevel > darkestPaper;
}

void BorderSearch::lookFromPrint()
{
    const int width = rows_.columns(), height = rows_.rows();
    const int textRight = text_.x + text_.width, textBottom = text_.y + text_.height;
    outer_ = columns_.find({text_.y, textBottom}, textRight, 1, width);
    for (int pass = 0; pass < 2; ++pass) {
        top_ = rows_.find(across(), text_.y, -1, -1);
        bottom_ = rows_.find(across(), textBottom, 1, height);
        outer_ = columns_.find(down(), textRight, 1, width);
    }
}

// A picture that goes to the page's end looks like a desk, but the sides run on along it.
void BorderSearch::followSides()
{
    if (outer_.wasSeen) {
        follow(top_, -1, rows_, across(), {columns_.runsOn(outer_.row, 1, top_.row, -1)});
        follow(bottom_, 1, rows_, across(), {columns_.runsOn(outer_.row, 1, bottom_.row, 1)});
    }
    std::vector<int> ends;
    if (top_.wasSeen)
        ends.push_back(rows_.runsOn(top_.row, -1, outer_.row, 1));
    if (bottom_.wasSeen)
        ends.push_back(rows_.runsOn(bottom_.row, 1, outer_.row, 1));
    follow(outer_, 1, columns_, down(), ends);
}

} // namespace mirvak

#include "BookGeometry.h"

#include "FlatView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double letterNoise = 0.35; // pixels of the look: a letter's foot in a line
constexpr double mostError = 0.25;   // letter heights: lines further off are not explained by a bend
constexpr double textWeight = 0.1;   // letters of a line err together
constexpr double edgeWeight = 1;
constexpr double leastPaper = 0.5;                     // of a page's area
constexpr double endInset = 0.003, spineInset = 0.008; // of a page's width: the edge itself, the fold
constexpr double mostCrossing = 0.12;                  // of the lines of print
constexpr double flatError = 1.5;                      // of what is left by a bend, and of a letter's noise
constexpr double mostTilt = 0.5;                       // radians: a camera stands above the book
constexpr double leastAspect = 0.4, mostAspect = 4;    // height of a page by its width
constexpr double mostDifference = 0.05;                // of two pages of a book, by their height
constexpr size_t leastLines = 3;
constexpr size_t leastText = 40; // letters that tell where print is

double quantileOf(std::vector<double>& values, double share)
{
    const auto at = values.begin() + static_cast<long>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

} // namespace

BookGeometry::BookGeometry(const cv::Mat& rgb)
    : look_(rgb), letters_(findLetters(look_)), spine_(findSpine(look_))
{
    begin();
    if (!runsDown(letters_))
        chains_ = chainLetters(letters_, std::tan(model_.turn));
    if (spine_ && isCrossed()) {
        spine_.reset();
        begin();
    }
    fit();
}

// Print goes over a fold of one sheet, never over a spine.
bool BookGeometry::isCrossed() const
{
    size_t crossing = 0;
    for (const Chain& chain : chains_) {
        const auto onRight = std::count_if(chain.begin(), chain.end(), [&](const Letter& l) {
            return isOnRight(model_, look_.toFrame({l.centre(), l.bottom()}));
        });
        crossing += onRight >= 3 && static_cast<long>(chain.size()) - onRight >= 3;
    }
    return crossing > mostCrossing * static_cast<double>(chains_.size());
}

double BookGeometry::noise() const
{
    return letterNoise / look_.side();
}

void BookGeometry::begin()
{
    const cv::Point2d corner = look_.toFrame({look_.green().cols - 0.5, look_.green().rows - 0.5});
    if (spine_) {
        model_.spine = spine_->middle;
        model_.turn = spine_->turn;
        const double left = (corner.x + model_.spine.x) / model_.focal;
        const double right = (corner.x - model_.spine.x) / model_.focal;
        model_.pages = {PageProfile(1.05 * left, 1.5), PageProfile(1.05 * right, 1.5)};
    } else {
        model_.spine = {-corner.x, 0};
        model_.pages[1] = PageProfile(2.05 * corner.x / model_.focal, 1.0);
    }
    model_.prepare();
}

void BookGeometry::fit()
{
    error_ = fitBook(model_, text(), spine_, noise());
    // Edges are looked for where the model has them by now, ever closer.
    for (const int reach : {12, 6}) {
        lookForBorders(reach);
        std::vector<Track> tracks = text();
        for (Track& margin : marginsOf(chains_, look_, model_, isSpread()))
            tracks.push_back(std::move(margin));
        for (const PageBorder& border : borders_) {
            for (const Track& edge : border.edges) {
                tracks.push_back(edge);
                tracks.back().weight = edgeWeight;
            }
        }
        error_ = fitBook(model_, tracks, spine_, noise());
    }
    lookForBorders(4);
    matchSizes();
    for (size_t page = firstPage(); page < 2; ++page) {
        if (!borders_[page].area.empty())
            remainders_[page] =
                std::make_unique<Remainder>(model_, text(), page == 1, borders_[page].area, noise());
    }
}

void BookGeometry::lookForBorders(int reach)
{
    const std::array<PageBorder, 2> before = borders_;
    for (size_t page = firstPage(); page < 2; ++page)
        borders_[page] = border(page == 1, reach);
    for (const bool isRight : {false, true}) {
        const bool mayBePicture = isSpread() && borders_[isRight].paper < leastPaper &&
                                  textArea(isRight).empty() && !textArea(!isRight).empty();
        if (mayBePicture)
            lookForPicture(isRight, before[isRight].isPicture, reach);
    }
}

void BookGeometry::lookForPicture(bool isRight, bool isKnown, int reach)
{
    CylinderModel model = model_;
    if (!isKnown) { // nothing has told yet how it is bent
        model.pages[isRight] = model.pages[!isRight];
        model.prepare();
    }
    const FlatView view = viewPage(look_, model, isRight);
    const auto picture = findPicture(view, model, isRight, borders_[!isRight].area, reach);
    if (!picture)
        return;
    borders_[isRight] = *picture;
    model_ = model;
}

// Pages of a book are of one size. One of which little is known, as a picture's, is as large as the other;
// one whose end may be that of its print reaches as far as the other's.
void BookGeometry::matchSizes()
{
    if (!isSpread() || borders_[0].area.empty() || borders_[1].area.empty())
        return;
    const std::array<PageBorder, 2> seen = borders_;
    for (const bool isRight : {false, true}) {
        const PageBorder &own = seen[isRight], &other = seen[!isRight];
        if (own.isPicture)
            continue;
        const bool isKnown = !textArea(isRight).empty();
        const auto reach = [&](double mine, double others, bool wasSeen) {
            return !isKnown || (wasSeen && others - mine > mostDifference * own.area.height)
                       ? std::max(mine, others)
                       : mine;
        };
        const double width = reach(own.area.width, other.area.width, own.hasOuter && other.hasOuter);
        const double top = -reach(-own.area.y, -other.area.y, own.hasTop && other.hasTop);
        const double bottom = reach(own.area.br().y, other.area.br().y, own.hasBottom && other.hasBottom);
        borders_[isRight].area = {isRight ? own.area.x : own.area.br().x - width, top, width, bottom - top};
    }
}

std::vector<Track> BookGeometry::text() const
{
    std::vector<Track> tracks = tracksOf(chains_, look_, model_, isSpread());
    for (Track& track : tracks)
        track.weight = textWeight;
    return tracks;
}

cv::Rect2d BookGeometry::textArea(bool isRight) const
{
    std::vector<double> s, v;
    for (const Chain& chain : chains_) {
        for (const Letter& letter : chain) {
            const cv::Point2d frame = look_.toFrame({letter.centre(), letter.bottom()});
            if (isSpread() && isOnRight(model_, frame) != isRight)
                continue;
            const cv::Point2d flat = model_.toFlat(frame, isRight);
            s.push_back(flat.x);
            v.push_back(flat.y);
        }
    }
    if (s.size() < leastText)
        return {};
    const cv::Point2d first(quantileOf(s, 0.01), quantileOf(v, 0.01));
    const cv::Point2d last(quantileOf(s, 0.99), quantileOf(v, 0.99));
    return {first, last};
}

PageBorder BookGeometry::border(bool isRight, int reach) const
{
    return findBorder(
        viewPage(look_, model_, isRight), model_, isRight, isSpread(), textArea(isRight), reach);
}

bool BookGeometry::hasPage(bool isRight) const
{
    const PageBorder& border = borders_[isRight];
    if (border.isPicture)
        return true;
    if (border.area.empty() || border.paper < leastPaper)
        return false;
    const int seen = border.hasTop + border.hasBottom + border.hasOuter;
    return border.isBright && (!textArea(isRight).empty() || seen >= 2);
}

bool BookGeometry::hasPrint() const
{
    return chains_.size() >= leastLines;
}

cv::Rect2d BookGeometry::area(bool isRight) const
{
    const cv::Rect2d& found = borders_[isRight].area;
    const double rim = endInset * found.width, fold = isSpread() ? spineInset * found.width : rim;
    const double atLeft = isRight ? fold : rim;
    return {found.x + atLeft, found.y + rim, found.width - rim - fold, found.height - 2 * rim};
}

bool BookGeometry::holds() const
{
    if (error_ > mostError * std::max(4.0, letters_.height) / look_.side() ||
        std::abs(model_.tilt) > mostTilt)
        return false;
    for (const bool isRight : {false, true}) {
        const cv::Rect2d& page = borders_[isRight].area;
        const double aspect = page.height / std::max(1e-9, page.width);
        if (hasPage(isRight) && borders_[isRight].hasOuter && (aspect < leastAspect || aspect > mostAspect))
            return false;
    }
    return true;
}

// Deviation of the lines of print from straight ones in the picture as a flat sheet would show them.
bool BookGeometry::isFlat() const
{
    if (spine_)
        return false;
    std::vector<double> off;
    const double pixels = look_.side(); // the robust fit counts in them
    for (const Track& track : text()) {
        std::vector<cv::Point2f> points;
        for (const cv::Point2d& point : track.points)
            points.push_back(point * pixels);
        cv::Vec4f line;
        cv::fitLine(points, line, cv::DIST_WELSCH, 1, 1e-3, 1e-3);
        for (const cv::Point2f& point : points)
            off.push_back(std::abs((point.x - line[2]) * line[1] - (point.y - line[3]) * line[0]) / pixels);
    }
    return off.empty() || quantileOf(off, 0.5) < flatError * std::max(error_, noise());
}

cv::Mat BookGeometry::picture(const cv::Mat& rgb, const cv::Rect2d& area) const
{
    return remapPiece(rgb, look_, model_, remainders_, pieceOf(look_, model_, area));
}

} // namespace mirvak

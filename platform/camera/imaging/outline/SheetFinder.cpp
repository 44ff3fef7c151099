#include "SheetFinder.h"

#include "EdgeField.h"
#include "LineFinder.h"
#include "QuadFinder.h"
#include "ReadingOrder.h"
#include "SheetChoice.h"
#include "SmallLook.h"

#include <algorithm>

namespace mirvak {

namespace {

constexpr size_t mostLines = 100;
constexpr int mostRounds = 6;
constexpr double rimWidth = 4; // pixels, at the corners

// The edge itself lies about the outline; what is left of it would bend the lines of the neighbours.
std::vector<cv::Point> withRim(const std::array<cv::Point2d, 4>& corners)
{
    const cv::Point2d middle = 0.25 * (corners[0] + corners[1] + corners[2] + corners[3]);
    std::vector<cv::Point> part;
    for (const cv::Point2d& corner : corners) {
        const cv::Point2d away = corner - middle;
        const cv::Point2d rim = corner + away * (rimWidth / std::max(1.0, cv::norm(away)));
        part.emplace_back(cvRound(rim.x), cvRound(rim.y));
    }
    return part;
}

} // namespace

struct SheetFinder::Work
{
    bool searchOnce();

    SmallLook look;
    EdgeField edges;
    RegionField regions;
    LineFinder lines;
    QuadFinder quads;
    SheetChoice choice;
};

/// One search among the edges that are left. The edges of what was found go, so that the next search has its
/// lines for the other sheets: the longest ones are all that it looks at.
bool SheetFinder::Work::searchOnce()
{
    const SmallLook::Planes& planes = look.planes();
    const auto& found = lines.find(edges, planes, regions, mostLines);
    quads.find(found, look.reduction().size(), QuadFinder::Search::sheets);
    const std::vector<Outline> more = choice.choose(quads.quads(), edges, planes, regions);
    for (const Outline& sheet : more) {
        edges.erase(withRim(sheet.corners));
    }
    return !more.empty();
}

SheetFinder::SheetFinder() : work_(std::make_unique<Work>()) {}

SheetFinder::~SheetFinder() = default;

std::vector<Outline> SheetFinder::find(const cv::Mat& rgb)
{
    if (!SmallLook::canHoldPage(rgb))
        return {};
    Work& work = *work_;
    work.edges.build(work.look.build(rgb));
    work.regions.build(work.look.planes(), work.edges.change());
    work.choice.clear();
    for (int round = 0; round < mostRounds && work.searchOnce(); ++round) {
    }
    if (work.choice.losesPage(work.edges, work.look.planes()))
        return {};
    std::vector<Outline> sheets = work.choice.sheets();
    for (Outline& sheet : sheets)
        sheet.corners = work.look.inPicture(sheet.corners);
    sortForReading(sheets);
    return sheets;
}

std::vector<Outline> findSheets(const cv::Mat& rgb)
{
    thread_local SheetFinder finder;
    return finder.find(rgb);
}

} // namespace mirvak

#include "MapScenes.h"

#include "QuadOverlap.h"
#include "Sheets.h"
#include "Shot.h"
#include "Table.h"

namespace sheetmap {

namespace {

double anyAngle(Chance& chance)
{
    return chance.happens(0.7) ? chance.between(-0.25, 0.25) + 0.5 * CV_PI * chance.below(4)
                               : chance.between(0, 2 * CV_PI);
}

constexpr double inPicture = 1.4; ///< pixels of a sheet to one of the frame: it stays sharp

/// The sheet's length in pixels of the frame: from a card to all that the frame holds.
double anyLength(Chance& chance)
{
    return chance.happens(0.75) ? chance.between(150, 300) : chance.between(70, 170);
}

/// Where the whole sheet mostly fits in; sometimes one side leaves the frame.
cv::Point2d anyPlace(double length, Chance& chance)
{
    const double roomX = std::max(0.0, 0.5 * (frame.width - 0.85 * length)),
                 roomY = std::max(0.0, 0.5 * (frame.height - 0.8 * length));
    return {chance.between(-roomX, roomX), chance.between(-roomY, roomY)};
}

bool leavesTooFar(const Corners& corners)
{
    const double w = frame.width - 1, h = frame.height - 1;
    const Corners whole{{{0, 0}, {w, 0}, {w, h}, {0, h}}};
    const double area = mirvak::areaOf(corners);
    int out = 0; // corners
    for (const cv::Point2d& corner : corners)
        out += corner.x < -2 || corner.y < -2 || corner.x > w + 2 || corner.y > h + 2 ? 1 : 0;
    return out > 2 || mirvak::sharedArea(corners, whole) < 0.6 * area || area > 0.97 * w * h;
}

void coverBy(Table& table, const Corners& sheet, Chance& chance)
{
    const size_t side = static_cast<size_t>(chance.below(4));
    const cv::Point2d at = sheet[side] + chance.between(0, 1) * (sheet[(side + 1) % 4] - sheet[side]);
    const double angle = chance.between(0, 2 * CV_PI);
    const cv::Point2d way(std::cos(angle), std::sin(angle));
    if (chance.happens(0.5)) { // fingers
        const Colour skin = chance.near({205, 150, 125}, 55);
        const double wide = chance.between(6, 18);
        for (int i = 0; i < 1 + chance.below(3); ++i)
            table.layBar(at + i * 1.1 * wide * cv::Point2d(-way.y, way.x),
                         at + 400 * way + i * 1.4 * wide * cv::Point2d(-way.y, way.x),
                         wide,
                         skin);
    } else {
        table.layBar(at - chance.between(2, 30) * way,
                     at + chance.between(20, 120) * way,
                     chance.spread(2, 9),
                     chance.any());
    }
}

/// A sheet that is mostly whole in the frame.
struct Placing
{
    PaperSheet paper;
    double length, angle;
    cv::Point2d middle;

    cv::Matx33d place() const { return placed(paper, middle, angle, length); }
};

Placing placeWhole(const Table& table, double length, Chance& chance)
{
    const double angle = anyAngle(chance);
    Placing sheet{makePaper(inPicture * length, table.desk(), chance), length, angle, {}};
    sheet.middle = anyPlace(length, chance);
    for (int i = 0; i < 8 && leavesTooFar(table.seen(sheet.paper, sheet.place())); ++i) {
        sheet.length *= 0.95;
        sheet.middle = anyPlace(sheet.length, chance);
    }
    return sheet;
}

cv::Point2d beside(const cv::Point2d& middle, double far, Chance& chance)
{
    const double way = chance.between(0, 2 * CV_PI);
    return middle + far * cv::Point2d(std::cos(way), std::sin(way));
}

std::vector<Corners> layBelow(Table& table, const Placing& sheet, Chance& chance)
{
    const int others = chance.happens(0.4) ? 1 + chance.below(3) : 0;
    const bool isPile = chance.happens(0.25);
    std::vector<Corners> below;
    for (int i = 0; i < others; ++i) {
        const double size = isPile ? sheet.length : anyLength(chance);
        const PaperSheet other =
            isPile && chance.happens(0.5) ? sheet.paper : makePaper(inPicture * size, table.desk(), chance);
        const double far = isPile ? chance.between(0.01, 0.3) * sheet.length
                                  : chance.between(0.2, 0.6) * (sheet.length + size) / 2;
        const cv::Point2d middle = beside(sheet.middle, far, chance);
        const double angle = isPile ? sheet.angle + chance.between(-0.2, 0.2) : anyAngle(chance);
        below.push_back(table.lay(other, placed(other, middle, angle, size)));
    }
    return below;
}

bool isPartlyOn(const Corners& sheet, const Corners& below)
{
    const double share = mirvak::sharedArea(sheet, below) / mirvak::areaOf(sheet);
    return share > 0.25 && share < 0.97;
}

MapScene taken(MapScene scene, Table& table, Chance& chance)
{
    castLight(table.picture(), chance);
    scene.picture = photograph(table.picture(), chance);
    return scene;
}

MapScene emptyScene()
{
    MapScene scene;
    scene.unclear = cv::Mat::zeros(frame, CV_8UC1);
    return scene;
}

} // namespace

MapScene makeMapScene(unsigned seed, bool withPatterns)
{
    Chance chance(seed);
    Table table(chance, withPatterns);
    table.clutter();
    MapScene scene = emptyScene();
    if (!chance.happens(0.17)) {
        const Placing sheet = placeWhole(table, anyLength(chance), chance);
        const std::vector<Corners> below = layBelow(table, sheet, chance);
        const Corners corners = table.lay(sheet.paper, sheet.place());
        for (const Corners& other : below) {
            const std::vector<cv::Point> outline(other.begin(), other.end());
            if (mirvak::sharedArea(corners, other) < 30)
                cv::fillConvexPoly(scene.unclear, outline, 255);
        }
        if (leavesTooFar(corners))
            scene.unclear.setTo(255);
        else
            scene.sheet = corners;
        if (chance.happens(0.25))
            coverBy(table, corners, chance);
    }
    return taken(std::move(scene), table, chance);
}

MapScene makeStackScene(unsigned seed)
{
    Chance chance(seed);
    Table table(chance, true);
    table.clutter();
    const Placing below = placeWhole(table, chance.between(170, 300), chance);
    const Corners covered = table.lay(below.paper, below.place());
    const double length = chance.between(0.25, 0.95) * below.length, angle = anyAngle(chance);
    Placing sheet{makePaper(inPicture * length, table.desk(), chance), length, angle, {}};
    Corners seen;
    do {
        sheet.length *= 0.99;
        sheet.middle = beside(below.middle, chance.between(0.1, 0.6) * below.length, chance);
        seen = table.seen(sheet.paper, sheet.place());
    } while (!isPartlyOn(seen, covered) || leavesTooFar(seen));
    MapScene scene = emptyScene();
    scene.sheet = table.lay(sheet.paper, sheet.place(), chance.happens(0.5) ? 0 : -1);
    if (chance.happens(0.25))
        coverBy(table, *scene.sheet, chance);
    return taken(std::move(scene), table, chance);
}

} // namespace sheetmap

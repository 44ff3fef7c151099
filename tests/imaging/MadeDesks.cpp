#include "MadeDesks.h"

#include <opencv2/imgproc.hpp>

namespace made {

namespace {

const cv::Size frame(1632, 1224);

/// Lays a sheet into each cell of a table of that many columns and rows.
class Table
{
public:
    Table(ManySheets& scene, int columns, int rows)
        : scene_(scene), columns_(columns), cell_(frame.width / columns, frame.height / rows)
    {
    }
    void lay(const cv::Mat& sheet, cv::Size2d size, double degrees, double tilt = 0)
    {
        const int n = static_cast<int>(scene_.truth.size());
        const cv::Point2d centre(cell_.width * (n % columns_ + 0.5), cell_.height * (n / columns_ + 0.5));
        scene_.truth.push_back(placed(centre, size, degrees, tilt));
        made::lay(scene_.picture, sheet, scene_.truth.back(), 0.75);
    }

private:
    ManySheets& scene_;
    int columns_;
    cv::Size2d cell_;
};

void layCards(ManySheets& scene, int count, double most, cv::RNG& random)
{
    const int columns = count < 5 ? 2 : 3, rows = (count + columns - 1) / columns;
    Table table(scene, columns, rows);
    for (int i = 0; i < count; ++i)
        table.lay(cardPage({500, 315}), {333, 210}, random.uniform(-most, most), 0.03);
    scene.name = std::to_string(count) + (most > 0 ? " cards turned" : " cards in rows");
}

/// All in one place, a few millimetres apart, so that their edges share lines and their shadows touch.
void layTight(ManySheets& scene, int columns, int rows, cv::Size2d size, double degrees, double gap)
{
    const double angle = degrees * CV_PI / 180;
    for (int i = 0; i < columns * rows; ++i) {
        const double x = (i % columns - 0.5 * (columns - 1)) * (size.width + gap);
        const double y = (i / columns - 0.5 * (rows - 1)) * (size.height + gap);
        const cv::Point2d centre(816 + std::cos(angle) * x - std::sin(angle) * y,
                                 612 + std::sin(angle) * x + std::cos(angle) * y);
        scene.truth.push_back(placed(centre, size, degrees));
        const bool isCard = size.width > size.height;
        lay(scene.picture,
            isCard ? cardPage({500, 315}) : textPage({300, 1000}, 24, static_cast<unsigned>(i + 1)),
            scene.truth.back(),
            0.75);
    }
    scene.name = std::to_string(columns * rows) + " in a tight block";
}

void layReceipts(ManySheets& scene, double degrees)
{
    Table table(scene, 4, 1);
    int i = 0;
    for (const double length : {980.0, 620.0, 430.0, 800.0}) {
        table.lay(textPage({300, static_cast<int>(length * 1.3)}, 24, 3),
                  {220, length},
                  i % 2 ? degrees : -degrees);
        ++i;
    }
    scene.name = "receipts";
}

void layMixture(ManySheets& scene, cv::RNG& random)
{
    Table table(scene, 3, 2);
    const auto turn = [&] { return random.uniform(-20.0, 20.0); };
    table.lay(cardPage({500, 315}), {340, 214}, turn());
    table.lay(tablePage({500, 707}), {350, 495}, turn());
    table.lay(textPage({300, 700}, 24), {210, 490}, turn());
    table.lay(blankPage({500, 315}), {340, 214}, turn());
    table.lay(textPage({500, 707}, 26), {350, 495}, turn());
    table.lay(cardPage({500, 315}), {340, 214}, 90 + turn());
    scene.name = "a mixture";
}

} // namespace

ManySheets manySheets(int kind, Desk ground, unsigned seed)
{
    cv::RNG random(seed * 7919 + static_cast<unsigned>(kind));
    ManySheets scene;
    scene.picture = desk(frame, ground, seed);
    if (kind < 5)
        layCards(scene, std::array<int, 5>{2, 3, 5, 7, 9}[static_cast<size_t>(kind)], 180, random);
    else if (kind == 5)
        layCards(scene, 9, 0, random);
    else if (kind == 6)
        layTight(scene, 3, 3, {333, 210}, 0, 24);
    else if (kind == 7)
        layTight(scene, 2, 2, {333, 210}, 14, 24);
    else if (kind == 8)
        layTight(scene, 3, 1, {240, 800}, -4, 26);
    else if (kind == 9)
        layReceipts(scene, 6);
    else if (kind == 10) {
        Table table(scene, 2, 1);
        table.lay(textPage({700, 1000}, 30, 1), {650, 925}, 5);
        table.lay(tablePage({700, 1000}), {650, 925}, -3);
        scene.name = "two of A5";
    } else {
        layMixture(scene, random);
    }
    shine(scene.picture, {0.75, 1, 3}, seed);
    return scene;
}

} // namespace made

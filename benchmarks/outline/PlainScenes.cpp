#include "PlainScenes.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

using made::Corners;

namespace {

cv::Mat anySheet(cv::RNG& random)
{
    const unsigned seed = random();
    switch (random.uniform(0, 5)) {
    case 0:
        return made::textPage({1000, 1414}, random.uniform(24, 44), seed);
    case 1:
        return made::tablePage({1000, 1414});
    case 2:
        return made::textPage({300, 1200}, 24, seed);
    case 3:
        return made::blankPage({1000, 1414});
    default:
        break;
    }
    cv::Mat page = made::textPage({1000, 1414}, 30, seed); // with a picture
    page(cv::Rect(120, 150, random.uniform(200, 700), random.uniform(150, 500)))
        .setTo(cv::Scalar(random.uniform(30, 200), random.uniform(30, 200), random.uniform(30, 200)));
    return page;
}

cv::Size2d sizeOf(const cv::Mat& sheet, double height)
{
    return {height * sheet.cols / sheet.rows, height};
}

void layPage(PlainScene& scene, double shadow, cv::RNG& random)
{
    const cv::Size frame = scene.picture.size();
    const cv::Point2d middle(0.5 * frame.width + random.uniform(-40.0, 40.0), 0.5 * frame.height);
    const cv::Mat below = anySheet(random), sheet = anySheet(random);
    if (random.uniform(0, 3) == 0)
        made::lay(
            scene.picture,
            below,
            made::placed(middle + cv::Point2d(random.uniform(-300.0, 300.0), random.uniform(-200.0, 200.0)),
                         sizeOf(below, 0.75 * frame.height),
                         random.uniform(-40.0, 40.0)),
            shadow);
    scene.sheet =
        made::placed(middle,
                     sizeOf(sheet, random.uniform(0.55, 0.8) * frame.height),
                     random.uniform(0, 2) ? random.uniform(-15.0, 15.0) : random.uniform(0.0, 360.0),
                     random.uniform(0.0, 0.12));
    made::lay(scene.picture, sheet, *scene.sheet, shadow);
}

/// Upright, out of the picture above or below.
void layCutOffPage(PlainScene& scene, double shadow, cv::RNG& random)
{
    const cv::Size frame = scene.picture.size();
    const cv::Mat sheet = anySheet(random);
    const cv::Size2d size = sizeOf(sheet, random.uniform(0.8, 1.1) * frame.height);
    const bool isBelow = random.uniform(0, 2) == 0;
    const double seen = random.uniform(0.6, 0.9) * frame.height;
    const double y = isBelow ? frame.height - seen + 0.5 * size.height : seen - 0.5 * size.height;
    Corners corners = made::placed({0.5 * frame.width, y}, size, random.uniform(-2.5, 2.5));
    made::lay(scene.picture, sheet, corners, shadow);
    const double border = isBelow ? frame.height - 1 : 0;
    for (const auto& [out, in] : {std::pair<size_t, size_t>{0, 3}, {1, 2}}) {
        cv::Point2d& end = corners[isBelow ? in : out];
        const cv::Point2d& start = corners[isBelow ? out : in];
        end = start + (end - start) * ((border - start.y) / (end.y - start.y));
    }
    scene.sheet = corners;
}

/// Two pages; where their edges sink towards the fold the whole is no straight-edged thing.
void layBook(PlainScene& scene, double shadow, cv::RNG& random)
{
    const double k = scene.picture.cols / 1280.0,
                 sink = random.uniform(0, 2) ? 0 : random.uniform(8.0, 30.0) * k;
    const double left = random.uniform(160.0, 250.0) * k, right = scene.picture.cols - 1 - left;
    const double upper = 125 * k, lower = 830 * k;
    const cv::Point2d above(640 * k, upper + sink), below(640 * k, lower + sink);
    for (const Corners& half : {Corners{{{left, upper}, above, below, {left, lower}}},
                                Corners{{above, {right, upper}, {right, lower}, below}}})
        made::lay(scene.picture, made::textPage({555, 900}, 30, random()), half, shadow);
    const int wide = random.uniform(5, 12);
    for (int x = -wide; x < wide; ++x) { // the shadow of the fold
        const cv::Mat fold =
            scene.picture(cv::Rect(cvRound(above.x) + x, cvRound(above.y), 1, cvRound(below.y - above.y)));
        fold.convertTo(fold, -1, 0.5 + 0.5 * std::abs(x) / wide);
    }
    if (sink == 0)
        scene.sheet = Corners{{{left, upper}, {right, upper}, {right, lower}, {left, lower}}};
}

void layPens(PlainScene& scene, cv::RNG& random)
{
    const double k = scene.picture.cols / 1280.0;
    for (int i = 0; i < 4; ++i)
        made::lay(scene.picture,
                  cv::Mat(20, 300, CV_8UC3, cv::Scalar(random.uniform(20, 200), 40, 150)),
                  made::placed({(240 + 260 * i) * k, (390 + 50 * i) * k},
                               {400 * k, random.uniform(15.0, 30.0) * k},
                               random.uniform(0.0, 180.0)));
}

void fill(PlainScene& scene, cv::RNG& random)
{
    const cv::Size frame = scene.picture.size();
    scene.picture = random.uniform(0, 2) ? made::tablePage(frame)
                                         : made::textPage(frame, random.uniform(20, 44), random());
    if (random.uniform(0, 2))
        scene.picture(cv::Rect(300, 200, random.uniform(200, 500), random.uniform(100, 400)))
            .setTo(cv::Scalar(random.uniform(30, 220), 90, 80));
}

} // namespace

namespace {

/// A scene on its desk before the light falls on it.
class Still
{
public:
    Still(made::Desk desk, cv::Size picture, unsigned seed)
        : random(seed * 7919 + static_cast<unsigned>(desk) * 31 + 5), seed_(seed)
    {
        random.next();
        light_.darkest = random.uniform(0.5, 1.0);
        light_.shadow = random.uniform(0, 3) ? 1 : random.uniform(0.4, 0.8);
        light_.noise = random.uniform(1.0, 5.0);
        shadow = random.uniform(0.6, 0.95);
        scene.picture = made::desk(picture, desk, seed);
    }

    PlainScene lit()
    {
        made::shine(scene.picture, light_, seed_);
        return scene;
    }

    cv::RNG random;
    double shadow;
    PlainScene scene;

private:
    made::Light light_;
    unsigned seed_;
};

} // namespace

PlainScene makePlainScene(made::Desk desk, cv::Size picture, unsigned seed)
{
    Still still(desk, picture, seed);
    const int kind = still.random.uniform(0, 12); // half of them a page on a desk
    if (kind < 6)
        layPage(still.scene, still.shadow, still.random);
    else if (kind < 8)
        layCutOffPage(still.scene, still.shadow, still.random);
    else if (kind == 8)
        layBook(still.scene, still.shadow, still.random);
    else if (kind == 9)
        layPens(still.scene, still.random);
    else if (kind == 10)
        fill(still.scene, still.random);
    return still.lit();
}

PlainScene makeBookScene(made::Desk desk, cv::Size picture, unsigned seed)
{
    Still still(desk, picture, seed);
    layBook(still.scene, still.shadow, still.random);
    return still.lit();
}

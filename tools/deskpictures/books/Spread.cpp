#include "Spread.h"

#include "Finger.h"
#include "camera/Photograph.h"
#include "camera/Sensor.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace deskpictures {
namespace {

/// Neighbouring seeds shall have nothing in common.
cv::RNG randomOf(uint64_t seed)
{
    cv::RNG random(seed * 0x9E3779B97F4A7C15ULL + 0x632BE59BD9B4E019ULL);
    for (int i = 0; i < 16; ++i)
        random.next();
    return random;
}

struct NamedBend
{
    const char* name;
    Bend left;
    Bend right;
};

/// @param r  0 to 1: how much of it
NamedBend bendOf(int kind, double width, cv::RNG& random)
{
    const double r = random.uniform(0.0, 1.0);
    const double s = random.uniform(0.0, 1.0);
    switch (kind) {
    case 0:
        return {"low arch", {5 + 4 * r, 30 + 12 * s, 4, 0, 0}, {5 + 4 * s, 30 + 12 * r, 4, 0, 0}};
    case 1:
        return {"high arch", {14 + 8 * r, 28 + 10 * s, 5, 0, 0}, {14 + 8 * s, 28 + 10 * r, 5, 0, 0}};
    case 2:
        return {"steep gutter", {11 + 5 * r, 14 + 5 * s, 8, 0, 0}, {11 + 5 * s, 14 + 5 * r, 8, 0, 0}};
    case 3:
        return {"thick and thin", {14 + 6 * r, 26, 14 + 8 * s, 0, 0}, {4 + 3 * s, 34, 2, 0, 0}};
    case 4:
        return {"thin and thick", {4 + 3 * s, 34, 2, 0, 0}, {14 + 6 * r, 26, 14 + 8 * s, 0, 0}};
    default:
        return {"edge curls",
                {9 + 5 * r, 30, 5, 2 + 4 * s, width - 32},
                {9 + 5 * s, 30, 5, random.uniform(0, 2) ? 0.0 : 2 + 4 * r, width - 28}};
    }
}

Light lightOf(cv::RNG& random)
{
    Light light;
    light.fromDegrees = random.uniform(150.0, 390.0);
    light.falloff = random.uniform(0.04, 0.2);
    light.vignette = random.uniform(0.05, 0.22);
    light.exposure = random.uniform(0.72, 0.94);
    const double warmth = random.uniform(-0.04, 0.07);
    light.cast = {1 + warmth, 1, 1 - warmth};
    if (random.uniform(0, 3) == 0) {
        light.shadowAt = {random.uniform(0.0, 1.0), random.uniform(0.8, 1.1)};
        light.shadowSize = {random.uniform(0.3, 0.6), random.uniform(0.2, 0.5)};
        light.shadowDepth = random.uniform(0.1, 0.3);
    }
    return light;
}

Scene sceneOf(uint64_t seed, cv::RNG& random)
{
    Scene scene;
    scene.desk = static_cast<Material>(random.uniform(0, 5));
    scene.pose.turnDegrees = random.uniform(-12.0, 12.0) * (random.uniform(0, 3) ? 0.35 : 1);
    scene.pose.tiltDegrees = random.uniform(0.0, 9.0);
    scene.pose.fromDegrees = random.uniform(0.0, 360.0);
    scene.pose.distanceMm = random.uniform(400.0, 560.0);
    scene.pose.fill = random.uniform(0.8, 0.9);
    scene.pose.shift = {random.uniform(-0.035, 0.035), random.uniform(-0.02, 0.02)};
    scene.light = lightOf(random);
    scene.seed = seed;
    return scene;
}

/// What the page shows where it is, in mm from its top left corner, and the way into it.
struct Grip
{
    bool isRight;
    cv::Point2d edgeMm;
    cv::Point2d inward;
};

Grip gripOf(cv::Size2d page, cv::RNG& random)
{
    const bool isRight = random.uniform(0, 2) == 1;
    const double aslant = random.uniform(-0.35, 0.35);
    if (random.uniform(0, 3) == 0) // from below
        return {isRight,
                {page.width * (isRight ? random.uniform(0.3, 0.85) : random.uniform(0.15, 0.7)), page.height},
                {aslant, -1}};
    const double y = page.height * random.uniform(0.35, 0.9);
    return {isRight, {isRight ? page.width : 0, y}, {isRight ? -1.0 : 1.0, aslant}};
}

const std::array<cv::Vec3i, 6> skins = {
    {{226, 176, 146}, {240, 204, 182}, {205, 148, 112}, {172, 116, 84}, {128, 82, 58}, {86, 56, 42}}};

void holdBook(const Spread& spread, cv::Mat& layer, cv::RNG& random)
{
    const cv::Vec3d skin(skins.at(random.uniform(0, static_cast<int>(skins.size()))));
    const double size = random.uniform(0.85, 1.15);
    for (int count = random.uniform(0, 4); count > 0; --count) {
        const Grip grip = gripOf(spread.pageMm, random);
        const double reach = random.uniform(9.0, 19.0);
        Finger finger;
        finger.halfWidthMm = size * random.uniform(7.0, 10.0);
        finger.skin = skin;
        finger.hasNail = random.uniform(0, 4) != 0;
        finger.seed = random.next();
        const cv::Point2d way = grip.inward / cv::norm(grip.inward);
        // The tip's middle lies its radius behind its end.
        const cv::Point2d tip = grip.edgeMm + way * (reach - finger.halfWidthMm);
        const cv::Point2d inside = grip.edgeMm + way * 5;
        const cv::Point2d from = spread.toPhoto(grip.isRight, inside);
        const cv::Point2d step = spread.toPhoto(grip.isRight, inside + way) - from;
        finger.pxPerMm = spread.view->pxPerMm();
        finger.inwardPx = step / cv::norm(step);
        finger.tipPx = from + finger.inwardPx * ((tip - inside).dot(way) * finger.pxPerMm);
        paintFinger(layer, finger);
    }
}

/// Which paper a layer hides.
cv::Mat hiddenPaper(const Spread& spread, bool isRight, const cv::Mat& layer)
{
    cv::Mat mask(cv::Size(static_cast<int>(spread.pageMm.width * maskPxPerMm),
                          static_cast<int>(spread.pageMm.height * maskPxPerMm)),
                 CV_8U,
                 cv::Scalar(0));
    const cv::Rect frame({0, 0}, layer.size());
    mask.forEach<uchar>([&](uchar& value, const int* at) {
        const cv::Point2d pointMm((at[1] + 0.5) / maskPxPerMm, (at[0] + 0.5) / maskPxPerMm);
        const cv::Point seen = spread.toPhoto(isRight, pointMm);
        if (frame.contains(seen) && layer.at<cv::Vec4b>(seen)[3] > 127)
            value = 255;
    });
    return mask;
}

cv::Mat throughJpeg(const cv::Mat& rgb, int quality)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(quality);
    writer.write(QImage(rgb.data, rgb.cols, rgb.rows, static_cast<int>(rgb.step), QImage::Format_RGB888));
    const QImage read = QImage::fromData(buffer.data(), "jpeg").convertToFormat(QImage::Format_RGB888);
    return cv::Mat(read.height(),
                   read.width(),
                   CV_8UC3,
                   const_cast<uchar*>(read.constBits()),
                   static_cast<size_t>(read.bytesPerLine()))
        .clone();
}

cv::Mat expose(const Scene& scene, const Stage& stage, cv::RNG& random)
{
    const double blur = lensBlurPx(stage.colours().size()) * random.uniform(0.9, 1.5);
    const cv::Mat energy =
        Sensor::expose(stage.colours(), stage.light(), scene.light.cast * scene.light.exposure, blur);
    return throughJpeg(Sensor(scene.seed).develop(energy), random.uniform(82, 96));
}

BookLight bookLight(const Scene& scene, cv::RNG& random)
{
    const double turned = (scene.light.fromDegrees - scene.pose.turnDegrees) * CV_PI / 180;
    return {std::cos(turned) * random.uniform(0.25, 0.75), random.uniform(0.35, 0.65)};
}

cv::Size2d pageSize(cv::RNG& random)
{
    const double width = random.uniform(130.0, 178.0);
    return {width, width * random.uniform(1.3, 1.5)};
}

PageContent anyContent(cv::RNG& random)
{
    // Prose is what books are made of.
    const int draw = random.uniform(0, 2 * pageContents);
    return draw < pageContents ? static_cast<PageContent>(draw) : static_cast<PageContent>(draw % 4);
}

} // namespace

cv::Point2d Spread::toPhoto(bool isRight, cv::Point2d pointMm) const
{
    if (book)
        return book->toPicture(*view, isRight, pointMm);
    const cv::Point2d desk = view->pageToDesk(pointMm - cv::Point2d(pageMm.width / 2, pageMm.height / 2));
    return view->project({desk.x, desk.y, 0});
}

Spread makeSpread(uint64_t seed, cv::Size photoPx)
{
    cv::RNG random = randomOf(seed);
    Spread spread;
    BookForm form;
    spread.pageMm = form.pageMm = pageSize(random);
    // All bends in turn, so that few scenes show many of them.
    const NamedBend bend = bendOf(static_cast<int>(seed % 6), form.pageMm.width, random);
    spread.bend = bend.name;
    form.left = bend.left;
    form.right = bend.right;
    form.leavesLeftMm = 1 + 0.35 * bend.left.blockMm;
    form.leavesRightMm = 1 + 0.35 * bend.right.blockMm;
    form.coverMm = random.uniform(0, 3) ? random.uniform(1.5, 4.0) : 0.0;
    form.coverColour = cv::Vec3b(random.next() & 127, random.next() & 127, random.next() & 127);
    spread.left.page = drawBookPage(anyContent(random), form.pageMm, true, random);
    spread.right = SpreadPage{drawBookPage(anyContent(random), form.pageMm, false, random), {}};
    spread.name = std::string(nameOf(spread.left.page.content)) + "/" + nameOf(spread.right->page.content);
    const Scene scene = sceneOf(seed, random);
    spread.book = std::make_shared<OpenBook>(form, bookLight(scene, random));
    spread.view = std::make_shared<View>(scene.pose, spread.book->openMm(), photoPx);
    const Layer book =
        spread.book->see(*spread.view, spread.left.page.flat.image, spread.right->page.flat.image);
    Stage stage = emptyDesk(scene, *spread.view);
    stage.lay(book.colours, sheetShadows(3, spread.view->pxPerMm()));
    stage.shade(book.light);
    cv::Mat hands(photoPx, CV_8UC4, cv::Scalar::all(0));
    holdBook(spread, hands, random);
    spread.left.fingers = hiddenPaper(spread, false, hands);
    spread.right->fingers = hiddenPaper(spread, true, hands);
    stage.lay(hands,
              {{1.5 * spread.view->pxPerMm(), 1.6 * spread.view->pxPerMm(), 0.3},
               {4 * spread.view->pxPerMm(), 6 * spread.view->pxPerMm(), 0.2}});
    spread.photo = expose(scene, stage, random);
    return spread;
}

Spread makeFlatSheet(uint64_t seed, cv::Size photoPx)
{
    cv::RNG random = randomOf(seed);
    Spread spread;
    spread.bend = "flat";
    spread.pageMm = {210, 297};
    spread.left.page = drawBookPage(anyContent(random), spread.pageMm, true, random);
    spread.name = nameOf(spread.left.page.content);
    const Scene scene = sceneOf(seed, random);
    spread.view = std::make_shared<View>(scene.pose, spread.pageMm, photoPx);
    const FlatLayer sheet(spread.left.page.flat.image, spread.pageMm, spread.view->pxPerMm());
    Stage stage = emptyDesk(scene, *spread.view);
    stage.lay(sheet.warp(spread.view->pageToPicture(), photoPx), sheetShadows(0.4, spread.view->pxPerMm()));
    spread.photo = expose(scene, stage, random);
    return spread;
}

} // namespace deskpictures

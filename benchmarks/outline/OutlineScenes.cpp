#include "OutlineScenes.h"

#include "JpegCodec.h"
#include "Papers.h"
#include "camera/Layer.h"
#include "camera/Light.h"
#include "camera/Photograph.h"
#include "camera/Sensor.h"
#include "camera/Stage.h"
#include "camera/View.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

using deskpictures::FlatLayer;
using deskpictures::Stage;
using deskpictures::View;

namespace {

/// Puts things on a desk and takes the picture.
class Studio
{
public:
    Studio(desktops::Kind desk,
           const deskpictures::Pose& pose,
           cv::Size2d pageMm,
           cv::Size size,
           cv::RNG& random)
        : random_(random), size_(size), view_(pose, pageMm, size), light_(anyLight()),
          stage_(seeDesk(desk),
                 deskpictures::lightMap(light_, size, static_cast<uint64_t>(random())),
                 light_.fromDegrees)
    {
    }

    const View& view() const { return view_; }
    double between(double low, double high) { return random_.uniform(low, high); }
    bool chance(double share) { return random_.uniform(0.0, 1.0) < share; }

    /// @param onDesk  millimetres on the desk from the picture's middle
    void lay(const papers::Paper& paper, const cv::Matx33d& pageToPicture)
    {
        const cv::Size2d mm(paper.page.widthMm, paper.page.heightMm);
        const FlatLayer layer(paper.page.image, mm, view_.pxPerMm());
        stage_.lay(layer.warp(pageToPicture, size_),
                   deskpictures::sheetShadows(paper.thicknessMm * between(0.5, 1.5), view_.pxPerMm()));
    }

    /// A finger or a pen: a round bar with a light and a dark side.
    void layBar(const cv::Point2d& from, const cv::Point2d& to, double widthPx, const cv::Scalar& colour)
    {
        cv::Mat thing(size_, CV_8UC4, cv::Scalar::all(0));
        const int steps = 5;
        for (int i = 0; i < steps; ++i) {
            const double shade = 0.6 + 0.4 * (i + 1) / steps;
            cv::line(thing,
                     from,
                     to,
                     cv::Scalar(colour[0] * shade, colour[1] * shade, colour[2] * shade, 255),
                     std::max(1, cvRound(widthPx * (1 - 0.8 * i / steps))),
                     cv::LINE_AA);
        }
        stage_.lay(thing, {{0.5 * widthPx, 0.4 * widthPx, 0.4}});
    }

    /// The shadow of a lamp's arm or of the person: one edge of it is rather sharp.
    void castShadow()
    {
        const double angle = between(0, 2 * CV_PI), soft = between(0.004, 0.05) * size_.width;
        const double depth = between(0.25, 0.65), offset = between(-0.35, 0.35) * size_.width;
        const double wide = chance(0.5) ? 1e6 : between(0.1, 0.3) * size_.width;
        cv::Mat factor(size_, CV_32F);
        factor.forEach<float>([&](float& value, const int* at) {
            const double d = (at[1] - 0.5 * size_.width) * std::cos(angle) +
                             (at[0] - 0.5 * size_.height) * std::sin(angle) - offset;
            const double inside = 1 / (1 + std::exp(-d / soft)) / (1 + std::exp((d - wide) / soft));
            value = static_cast<float>(1 - depth * inside);
        });
        stage_.shade(factor);
    }

    /// A lamp mirrored in what lies there: everything becomes white.
    void reflectLamp(const cv::Point2d& at)
    {
        const double a = between(0.03, 0.09) * size_.width, b = between(0.03, 0.09) * size_.width;
        const double strength = between(1, 4), angle = between(0, CV_PI);
        cv::Mat factor(size_, CV_32F);
        factor.forEach<float>([&](float& value, const int* place) {
            const double x = place[1] - at.x, y = place[0] - at.y;
            const double u = (x * std::cos(angle) + y * std::sin(angle)) / a;
            const double v = (y * std::cos(angle) - x * std::sin(angle)) / b;
            value = static_cast<float>(1 + strength * std::exp(-0.5 * (u * u + v * v)));
        });
        stage_.shade(factor);
    }

    cv::Mat take()
    {
        const cv::Mat energy =
            deskpictures::Sensor::expose(stage_.colours(),
                                         stage_.light(),
                                         light_.cast * light_.exposure,
                                         deskpictures::lensBlurPx(size_) * between(1, 1.6));
        mirvak::Image image;
        image.pixels = deskpictures::Sensor(static_cast<uint64_t>(random_())).develop(energy);
        cv::Mat noise(size_, CV_8UC3);
        const double sigma = between(0, 5);
        random_.fill(noise, cv::RNG::NORMAL, 128, sigma);
        cv::addWeighted(image.pixels, 1, noise, 1, -128, image.pixels);
        const int quality = random_.uniform(60, 96);
        return mirvak::decodeJpeg(mirvak::encodeJpeg(image, quality))->pixels;
    }

private:
    cv::Mat seeDesk(desktops::Kind desk)
    {
        const cv::Mat top = desktops::make(desk, random_);
        const double angle = between(0, 2 * CV_PI), c = std::cos(angle), s = std::sin(angle);
        const double k = 1 / desktops::pxPerMm;
        const cv::Matx33d toMm(k, 0, -0.5 * k * top.cols, 0, k, -0.5 * k * top.rows, 0, 0, 1);
        const cv::Matx33d turn(c, -s, 0, s, c, 0, 0, 0, 1);
        cv::Mat seen;
        cv::warpPerspective(
            top, seen, view_.deskToPicture() * turn * toMm, size_, cv::INTER_LINEAR, cv::BORDER_REFLECT);
        return seen;
    }

    deskpictures::Light anyLight()
    {
        deskpictures::Light light;
        light.fromDegrees = between(0, 360);
        light.falloff = between(0.03, 0.3);
        light.vignette = between(0.03, 0.25);
        light.shadowAt = {between(0, 1), between(0, 1)};
        light.shadowSize = {between(0.3, 0.6), between(0.3, 0.6)};
        light.shadowDepth = chance(0.5) ? between(0.1, 0.4) : 0;
        const double warmth = between(-0.06, 0.06);
        light.cast = {1 + warmth, 1, 1 - warmth};
        light.exposure = between(0.55, 0.98);
        return light;
    }

    cv::RNG& random_;
    cv::Size size_;
    View view_;
    deskpictures::Light light_;
    Stage stage_;
};

cv::Point2d pointOnEdge(const Corners& corners, cv::RNG& random)
{
    const size_t side = static_cast<size_t>(random.uniform(0, 4));
    return corners[side] + (corners[(side + 1) % 4] - corners[side]) * random.uniform(0.15, 0.85);
}

deskpictures::Pose anyPose(const papers::Paper& paper, cv::RNG& random)
{
    deskpictures::Pose pose;
    const cv::Size2d mm(paper.page.widthMm, paper.page.heightMm);
    pose.turnDegrees = random.uniform(0, 3) ? random.uniform(-12.0, 12.0) : random.uniform(0.0, 360.0);
    pose.tiltDegrees = random.uniform(0, 2) ? random.uniform(0.0, 8.0) : random.uniform(8.0, 25.0);
    pose.fromDegrees = random.uniform(0.0, 360.0);
    const double diagonal = std::hypot(mm.width, mm.height);
    pose.distanceMm = 430 * std::max(1.0, diagonal / 363);
    // A small thing under a camera that hangs over A4, or a large one that fills the picture.
    const double most = std::min(0.93, 0.35 + diagonal / 400);
    pose.fill = random.uniform(0.75 * most, most);
    const double room = 0.5 * (0.97 - pose.fill);
    pose.shift = {random.uniform(-room, room), random.uniform(-room, room)};
    return pose;
}

/// Another sheet of which the first one will hide a part: a corner, a side, or nearly all.
void layBelow(Studio& studio, const papers::Paper& paper, cv::RNG& random)
{
    const papers::Paper other = papers::make(random.uniform(0, papers::kinds), random);
    const double angle = random.uniform(-0.6, 0.6), far = random.uniform(0.4, 1.0);
    const double way = random.uniform(0.0, 2 * CV_PI), c = std::cos(angle), s = std::sin(angle);
    const double x = 0.5 * (paper.page.widthMm + 0.6 * other.page.widthMm) * far * std::cos(way);
    const double y = 0.5 * (paper.page.heightMm + 0.6 * other.page.heightMm) * far * std::sin(way);
    const cv::Matx33d place(c, -s, x, s, c, y, 0, 0, 1);
    studio.lay(other, studio.view().pageToPicture() * place);
}

void layPen(Studio& studio, const cv::Point2d& tip, cv::RNG& random)
{
    const double angle = random.uniform(0.0, 2 * CV_PI), px = studio.view().pxPerMm();
    const cv::Point2d way(std::cos(angle), std::sin(angle));
    const cv::Scalar colour(random.uniform(10, 200), random.uniform(10, 90), random.uniform(10, 200));
    studio.layBar(tip - way * (20 * px), tip + way * (120 * px), 9 * px, colour);
}

} // namespace

OutlineScene makeOutlineScene(desktops::Kind desk, cv::Size picture, unsigned seed)
{
    cv::RNG random(seed * 2654435761U + static_cast<unsigned>(desk) * 40503U + 17U);
    random.next();
    const papers::Paper paper = papers::make(random.uniform(0, papers::kinds), random);
    const cv::Size2d mm(paper.page.widthMm, paper.page.heightMm);
    Studio studio(desk, anyPose(paper, random), mm, picture, random);
    OutlineScene scene;
    scene.name = paper.name;
    scene.sheet = studio.view().corners(mm);
    if (studio.chance(0.35)) {
        scene.name += ", over another sheet";
        layBelow(studio, paper, random);
    }
    studio.lay(paper, studio.view().pageToPicture());
    if (studio.chance(0.2)) {
        scene.name += ", a finger";
        const cv::Point2d tip = pointOnEdge(scene.sheet, random);
        const cv::Point2d middle = 0.25 * (scene.sheet[0] + scene.sheet[1] + scene.sheet[2] + scene.sheet[3]);
        const cv::Point2d way = (tip - middle) / cv::norm(tip - middle);
        const double px = studio.view().pxPerMm();
        studio.layBar(tip - way * (8 * px), tip + way * (900 * px), 17 * px, {224, 172, 150});
    } else if (studio.chance(0.15)) {
        scene.name += ", a pen";
        layPen(studio, pointOnEdge(scene.sheet, random), random);
    }
    if (studio.chance(0.35)) {
        scene.name += ", a shadow";
        studio.castShadow();
    }
    if (studio.chance(0.25)) {
        scene.name += ", a reflection";
        studio.reflectLamp(pointOnEdge(scene.sheet, random));
    }
    scene.picture = studio.take();
    return scene;
}

cv::Mat makeEmptyDesk(desktops::Kind desk, cv::Size picture, unsigned seed)
{
    cv::RNG random(seed * 2654435761U + static_cast<unsigned>(desk) * 40503U + 91U);
    random.next();
    const papers::Paper paper = papers::make(0, random);
    Studio studio(desk, anyPose(paper, random), {210, 297}, picture, random);
    if (studio.chance(0.3))
        layPen(studio, {0.5 * picture.width, 0.5 * picture.height}, random);
    if (studio.chance(0.5))
        studio.castShadow();
    if (studio.chance(0.3))
        studio.reflectLamp(
            {studio.between(0.2, 0.8) * picture.width, studio.between(0.2, 0.8) * picture.height});
    return studio.take();
}

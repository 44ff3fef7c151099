#include "Looks.h"

#include "camera/Noise.h"
#include "camera/Photograph.h"

#include <opencv2/imgproc.hpp>

#include <QRandomGenerator>

#include <algorithm>

namespace {

constexpr double drawnDpi = 300;
constexpr int paper = 250;

cv::Mat rgbOf(const deskpictures::FlatPage& page)
{
    const QImage rgba = page.image.convertToFormat(QImage::Format_RGBA8888);
    const cv::Mat view(rgba.height(),
                       rgba.width(),
                       CV_8UC4,
                       const_cast<uchar*>(rgba.constBits()),
                       static_cast<size_t>(rgba.bytesPerLine()));
    cv::Mat rgb;
    cv::cvtColor(view, rgb, cv::COLOR_RGBA2RGB);
    return rgb;
}

mirvak::Image scanned(cv::Mat rgb, double dpi, double softness, double noise, unsigned seed)
{
    if (dpi != drawnDpi)
        cv::resize(rgb, rgb, {}, dpi / drawnDpi, dpi / drawnDpi, cv::INTER_AREA);
    cv::GaussianBlur(rgb, rgb, {}, softness);
    cv::Mat grain(rgb.size(), CV_16SC3), sum;
    cv::RNG random(seed);
    random.fill(grain, cv::RNG::NORMAL, 0, noise);
    rgb.convertTo(sum, CV_16S);
    sum += grain;
    mirvak::Image image;
    sum.convertTo(image.pixels, CV_8U);
    image.dpi = dpi;
    return image;
}

cv::Mat askew(const cv::Mat& rgb, double degrees)
{
    const cv::Mat turn = cv::getRotationMatrix2D({rgb.cols / 2.0F, rgb.rows / 2.0F}, degrees, 1);
    cv::Mat turned;
    cv::warpAffine(
        rgb, turned, turn, rgb.size(), cv::INTER_CUBIC, cv::BORDER_CONSTANT, cv::Scalar::all(paper));
    return turned;
}

mirvak::Image clean(const deskpictures::FlatPage& page, unsigned seed)
{
    return scanned(rgbOf(page), 300, 0.6, 2, seed);
}

mirvak::Image noisy(const deskpictures::FlatPage& page, unsigned seed)
{
    cv::Mat rgb = rgbOf(page);
    cv::RNG random(seed + 1);
    for (int i = 0; i < 900; ++i) // dust on the glass and in the paper
        cv::circle(rgb,
                   {random.uniform(0, rgb.cols), random.uniform(0, rgb.rows)},
                   random.uniform(0, 3),
                   cv::Scalar::all(random.uniform(30, 190)),
                   cv::FILLED);
    return scanned(rgb, 300, 0.8, 18, seed);
}

mirvak::Image skewed(const deskpictures::FlatPage& page, unsigned seed)
{
    cv::RNG random(seed);
    return scanned(askew(rgbOf(page), random.uniform(-2.5, 2.5)), 200, 0.6, 4, seed);
}

mirvak::Image coarse(const deskpictures::FlatPage& page, unsigned seed)
{
    return scanned(rgbOf(page), 150, 0.5, 4, seed);
}

mirvak::Image faded(const deskpictures::FlatPage& page, unsigned seed)
{
    // The ribbon was dry in places, the paper has yellowed.
    cv::Mat rgb = rgbOf(page), ink;
    cv::RNG random(seed);
    const cv::Mat hills = deskpictures::fractalNoise(rgb.size(), {240, 60}, 5, 0.8, random);
    rgb.convertTo(ink, CV_32F, -1.0 / 255, 1);
    cv::Mat planes[3];
    cv::split(ink, planes);
    const cv::Mat strength = cv::min(cv::max(0.62 + 0.35 * hills, 0.25), 1.0);
    const double tint[] = {0.95, 0.91, 0.8};
    for (int i = 0; i < 3; ++i)
        planes[i] = (1 - planes[i].mul(strength)) * tint[i] * 255;
    cv::merge(planes, 3, ink);
    ink.convertTo(rgb, CV_8U);
    return scanned(rgb, 300, 0.9, 6, seed);
}

mirvak::Image photographed(const deskpictures::FlatPage& page, unsigned seed)
{
    QRandomGenerator any(seed);
    const auto between = [&any](double low, double high) {
        return low + (high - low) * any.generateDouble();
    };
    deskpictures::Scene scene;
    scene.desk = any.bounded(2) ? deskpictures::Material::Oak : deskpictures::Material::Dark;
    scene.pose.turnDegrees = between(-3, 3);
    scene.pose.tiltDegrees = between(0, 5);
    scene.light.falloff = between(0.05, 0.25);
    scene.light.shadowDepth = any.bounded(2) ? between(0.1, 0.35) : 0;
    scene.light.exposure = between(0.7, 0.95);
    scene.seed = seed;
    const cv::Size2d mm(page.widthMm, page.heightMm);
    const cv::Size size(2448, 3264); // a camera over a page that stands upright
    const deskpictures::View view(scene.pose, mm, size);
    const deskpictures::FlatLayer flat(page.image, mm, view.pxPerMm());
    mirvak::Image image;
    image.pixels = deskpictures::photograph(scene, view, {flat.warp(view.pageToPicture(), size), {}});
    image.dpi = mirvak::cameraDpi;
    return image;
}

} // namespace

const std::vector<Look>& looks()
{
    static const std::vector<Look> all = {{"camera", photographed},
                                          {"clean scan", clean},
                                          {"noisy scan", noisy},
                                          {"skewed scan", skewed},
                                          {"coarse scan", coarse},
                                          {"faded scan", faded}};
    return all;
}

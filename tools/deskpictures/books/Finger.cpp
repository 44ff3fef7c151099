// Finger coordinates: millimetres, origin in the middle of the round tip, `back` towards the hand.
#include "Finger.h"

#include "camera/Noise.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace deskpictures {
namespace {

constexpr double lengthMm = 140; // as far as the hand leaves the picture

/// Half the finger's width: a round tip, a waist behind it, the joint, then the hand.
double halfWidth(double back, double tip)
{
    const double joint = 0.1 * std::exp(-std::pow((back - 3.2 * tip) / (1.1 * tip), 2));
    const double hand = std::pow(std::max(0.0, back - 5 * tip) / (6 * tip), 2);
    return tip * (1 + 0.06 * std::min(1.0, back / tip) + joint + std::min(hand, 2.5));
}

/// Distance from the skin, negative inside.
double outline(cv::Point2d p, double tip)
{
    return p.x < 0 ? std::hypot(p.x, p.y) - tip : std::abs(p.y) - halfWidth(p.x, tip);
}

double bodyHeight(double inside, double reach)
{
    const double depth = std::clamp(inside, 0.0, reach);
    return std::sqrt(std::max(0.0, depth * (2 * reach - depth)));
}

double shade(cv::Point2d p, double tip, cv::Point2d lamp)
{
    const double step = 0.4;
    const auto height = [&](cv::Point2d at) { return bodyHeight(-outline(at, tip), tip); };
    const double back = (height({p.x + step, p.y}) - height({p.x - step, p.y})) / (2 * step);
    const double across = (height({p.x, p.y + step}) - height({p.x, p.y - step})) / (2 * step);
    const cv::Vec3d normal = cv::normalize(cv::Vec3d(-back, -across, 1));
    return 0.42 + 0.58 * std::max(0.0, normal.dot(cv::normalize(cv::Vec3d(lamp.x, lamp.y, 1))));
}

cv::Vec3d colourAt(cv::Point2d p, const Finger& finger, double mottle)
{
    const double tip = finger.halfWidthMm;
    cv::Vec3d colour = finger.skin * (1 + 0.05 * mottle);
    const double blood = std::exp(-(p.x * p.x + p.y * p.y) / (tip * tip));
    colour += cv::Vec3d(-4, -16, -14) * blood;
    for (const double crease : {2.9, 3.2, 3.5}) // over the joint
        colour *= 1 - 0.2 * std::exp(-std::pow((p.x - crease * tip + 0.02 * p.y * p.y) / 0.4, 2));
    if (finger.hasNail) {
        const double r = std::pow(std::abs(p.y) / (0.62 * tip), 2.6) +
                         std::pow(std::abs(p.x + 0.1 * tip) / (0.72 * tip), 2.6);
        const double nail = std::clamp((1 - r) * 4, 0.0, 1.0);
        colour = (1 - nail) * colour + nail * (0.72 * finger.skin + cv::Vec3d(64, 54, 52));
    }
    return colour;
}

} // namespace

void paintFinger(cv::Mat& layer, const Finger& finger)
{
    const cv::Point2d across(-finger.inwardPx.y, finger.inwardPx.x);
    const double wide = 4 * finger.halfWidthMm * finger.pxPerMm;
    const cv::Point2d end = finger.tipPx - finger.inwardPx * lengthMm * finger.pxPerMm;
    const cv::Rect area = cv::boundingRect(std::array<cv::Point2f, 4>{
                              cv::Point2f(finger.tipPx + across * wide + finger.inwardPx * wide),
                              cv::Point2f(finger.tipPx - across * wide + finger.inwardPx * wide),
                              cv::Point2f(end + across * wide),
                              cv::Point2f(end - across * wide)}) &
                          cv::Rect({0, 0}, layer.size());
    if (area.empty())
        return;
    cv::RNG random(finger.seed);
    const double cell = 5 * finger.pxPerMm;
    const cv::Mat mottle = fractalNoise(area.size(), {cell, cell}, 4, 0.6, random);
    const cv::Point2d lampPx(-0.5, -0.55);
    const cv::Point2d lamp(-lampPx.dot(finger.inwardPx), lampPx.dot(across));
    cv::Mat part = layer(area);
    part.forEach<cv::Vec4b>([&](cv::Vec4b& pixel, const int* at) {
        const cv::Point2d d = (cv::Point2d(area.x + at[1], area.y + at[0]) - finger.tipPx) / finger.pxPerMm;
        const cv::Point2d p(-d.dot(finger.inwardPx), d.dot(across));
        const double alpha = std::clamp(0.5 - outline(p, finger.halfWidthMm) / 0.5, 0.0, 1.0);
        if (alpha <= 0)
            return;
        const cv::Vec3d colour =
            colourAt(p, finger, mottle.at<float>(at[0], at[1])) * shade(p, finger.halfWidthMm, lamp);
        for (int c = 0; c < 3; ++c)
            pixel[c] = cv::saturate_cast<uchar>(colour[c] * alpha + pixel[c] * (1 - alpha));
        pixel[3] = cv::saturate_cast<uchar>(255 * alpha + pixel[3] * (1 - alpha));
    });
}

} // namespace deskpictures

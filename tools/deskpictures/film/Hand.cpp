// Hand coordinates: millimetres, origin in the wrist, x to the right, y towards the arm (fingers have
// negative y).
#include "Hand.h"

#include "camera/Noise.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace deskpictures {
namespace {

constexpr double density = 4; // px per mm, as in the film
constexpr double leftMm = 85;
constexpr double rightMm = 75;
constexpr double topMm = 195;
constexpr double armMm = 420;
const cv::Vec3d skin(226, 176, 146);
const cv::Vec3d cloth(58, 78, 112);

struct Bone
{
    cv::Point2d from;
    cv::Point2d to;
    double fromRadius;
    double toRadius;
};

// Thumb, then index to little finger, each from the palm to the tip; last the palm itself.
constexpr int fingerBones = 11;
const std::array<Bone, 17> bones = {{
    {{-22, -24}, {-48, -56}, 15, 11},
    {{-48, -56}, {-60, -84}, 11, 8.8},
    {{-60, -84}, {-62, -97}, 8.8, 7.6},
    {{-27, -88}, {-33, -132}, 10.5, 9.2},
    {{-33, -132}, {-36, -164}, 9.2, 7.4},
    {{-8, -92}, {-10, -142}, 10.8, 9.4},
    {{-10, -142}, {-11, -176}, 9.4, 7.6},
    {{11, -90}, {14, -136}, 10.2, 9},
    {{14, -136}, {16, -167}, 9, 7.3},
    {{28, -82}, {36, -118}, 9, 7.8},
    {{36, -118}, {40, -142}, 7.8, 6.5},
    {{-22, -20}, {-26, -86}, 19, 14},
    {{-6, -16}, {-8, -90}, 20, 14},
    {{10, -16}, {11, -88}, 20, 13.5},
    {{20, -18}, {27, -80}, 18, 12.5},
    {{0, 60}, {0, -10}, 28, 26},
    {{0, 500}, {0, 60}, 36, 28},
}};
// The sleeve hides the arm behind its cuff.
constexpr double cuffMm = 34;

struct Nail
{
    cv::Point2d at;
    double halfWidth;
    double halfLength;
    double turn; ///< radians
};
const std::array<Nail, 5> nails = {{
    {{-62, -96}, 5.4, 6.8, -0.2},
    {{-36.4, -165}, 5, 6.6, -0.09},
    {{-11, -177}, 5.2, 6.8, -0.03},
    {{16.2, -168}, 5, 6.5, 0.07},
    {{40.5, -143}, 4.2, 5.4, 0.17},
}};

// Distance from the bone's skin, negative inside.
double distance(const Bone& bone, cv::Point2d p)
{
    const cv::Point2d along = bone.to - bone.from;
    const cv::Point2d offset = p - bone.from;
    const double t = std::clamp(offset.dot(along) / along.dot(along), 0.0, 1.0);
    return cv::norm(offset - t * along) - (bone.fromRadius + t * (bone.toRadius - bone.fromRadius));
}

// Quilez, "Smooth minimum" (polynomial form): melts two distances together over k millimetres.
double melt(double a, double b, double k)
{
    const double h = std::max(k - std::abs(a - b), 0.0) / k;
    return std::min(a, b) - h * h * k / 4;
}

double handDistance(cv::Point2d p)
{
    // Fingers keep apart from each other and melt into the palm only.
    double palm = 1e3;
    for (size_t i = fingerBones; i < bones.size(); ++i)
        palm = melt(palm, distance(bones.at(i), p), 12);
    double fingers = 1e3;
    for (size_t i = 0; i < fingerBones; ++i)
        fingers = melt(fingers, distance(bones.at(i), p), 1.2);
    return melt(palm, fingers, 9);
}

double sleeveDistance(cv::Point2d p)
{
    const double folds = 1.2 * std::sin(p.y * 0.09 + 0.4) + 0.8 * std::sin(p.y * 0.21);
    const double half = 41 + 0.045 * (p.y - cuffMm) + folds;
    return std::max(std::abs(p.x) - half, cuffMm + 0.004 * p.x * p.x - p.y);
}

// A rounded body over its outline: full height from a depth of reach inwards.
double bodyHeight(double outline, double reach)
{
    const double depth = std::clamp(-outline, 0.0, reach);
    return std::sqrt(std::max(0.0, depth * (2 * reach - depth)));
}

struct Relief
{
    cv::Mat skinOutline;   // CV_32F, mm
    cv::Mat sleeveOutline; // CV_32F, mm
    cv::Mat height;        // CV_32F, mm
};

cv::Point2d toMm(int column, int row)
{
    return {(column + 0.5) / density - leftMm, (row + 0.5) / density - topMm};
}

Relief makeRelief(cv::Size size)
{
    Relief relief{cv::Mat(size, CV_32F), cv::Mat(size, CV_32F), cv::Mat(size, CV_32F)};
    relief.height.forEach<float>([&](float& height, const int* at) {
        const cv::Point2d p = toMm(at[1], at[0]);
        const double hand = handDistance(p);
        const double sleeve = sleeveDistance(p);
        relief.skinOutline.at<float>(at[0], at[1]) = static_cast<float>(hand);
        relief.sleeveOutline.at<float>(at[0], at[1]) = static_cast<float>(sleeve);
        const double folds = 1.4 * std::sin(0.16 * p.y + 0.05 * p.x) * std::sin(0.07 * p.x + 1);
        const double arm = sleeve < 0 ? 6 + bodyHeight(sleeve, 38) * 0.62 + folds : 0;
        height = static_cast<float>(std::max(bodyHeight(hand, 13), arm));
    });
    cv::GaussianBlur(relief.height, relief.height, {}, 1.5 * density);
    return relief;
}

double bump(cv::Point2d p, cv::Point2d at, double radius)
{
    const cv::Point2d d = (p - at) / radius;
    return std::exp(-d.dot(d));
}

// Blood shows at the knuckles and the fingertips; the creases over the joints are darker.
cv::Vec3d skinColour(cv::Point2d p, double mottle)
{
    double red = 0.25 * mottle;
    double crease = 0;
    for (const int i : {3, 5, 7, 9}) {
        const Bone& finger = bones.at(i);
        red += 0.5 * bump(p, finger.from, 8) + 0.35 * bump(p, finger.to, 7);
        const cv::Point2d d = p - finger.to;
        if (std::abs(d.x) < 7)
            for (const double at : {-2.2, 0.0, 2.2})
                crease += 0.22 * std::exp(-std::pow((d.y - at + 0.03 * d.x * d.x) / 0.45, 2)) *
                          (1 - std::abs(d.x) / 7);
    }
    for (const Nail& nail : nails)
        red += 0.55 * bump(p, nail.at, 11);
    const cv::Vec3d blood(-8, -34, -30);
    return (skin + std::min(red, 1.0) * blood) * (1 - 0.35 * crease);
}

// @return how much of the nail covers the point
double nailCover(const Nail& nail, cv::Point2d p)
{
    const cv::Point2d d = p - nail.at;
    const double across = d.x * std::cos(nail.turn) + d.y * std::sin(nail.turn);
    const double along = -d.x * std::sin(nail.turn) + d.y * std::cos(nail.turn);
    const double r =
        std::pow(std::abs(across) / nail.halfWidth, 2.6) + std::pow(std::abs(along) / nail.halfLength, 2.6);
    return std::clamp((1 - r) * 4, 0.0, 1.0);
}

double shadeAt(const cv::Mat& height, int row, int column)
{
    const int above = std::max(row - 1, 0);
    const int below = std::min(row + 1, height.rows - 1);
    const int before = std::max(column - 1, 0);
    const int after = std::min(column + 1, height.cols - 1);
    const double dx =
        (height.at<float>(row, after) - height.at<float>(row, before)) * density / (after - before);
    const double dy =
        (height.at<float>(below, column) - height.at<float>(above, column)) * density / (below - above);
    const cv::Vec3d normal = cv::normalize(cv::Vec3d(-dx, -dy, 1.0));
    const double lambert = std::max(0.0, normal.dot(cv::normalize(cv::Vec3d(-0.35, -0.45, 1.0))));
    return 0.34 + 0.66 * lambert;
}

} // namespace

HandPicture drawHand()
{
    const cv::Size size(static_cast<int>((leftMm + rightMm) * density),
                        static_cast<int>((topMm + armMm) * density));
    const Relief relief = makeRelief(size);
    cv::RNG random(77);
    const cv::Mat mottle = fractalNoise(size, {12 * density, 12 * density}, 4, 0.6, random);
    const cv::Mat weave = fractalNoise(size, {0.9 * density, 1.6 * density}, 2, 0.6, random);
    HandPicture hand{cv::Mat(size, CV_8UC4), {(leftMm - 11) * density, (topMm - 168) * density}, density};
    hand.colours.forEach<cv::Vec4b>([&](cv::Vec4b& pixel, const int* at) {
        const cv::Point2d p = toMm(at[1], at[0]);
        // Soft edges: skin is round and slightly out of focus.
        const auto cover = [](double outlineMm) { return std::clamp(0.5 - outlineMm / 0.7, 0.0, 1.0); };
        const double sleeve = cover(relief.sleeveOutline.at<float>(at[0], at[1]));
        const double alpha = std::max(sleeve, cover(relief.skinOutline.at<float>(at[0], at[1])));
        cv::Vec3d colour = skinColour(p, mottle.at<float>(at[0], at[1]));
        for (const Nail& nail : nails) {
            const double nailed = nailCover(nail, p);
            colour = (1 - nailed) * colour + nailed * cv::Vec3d(238, 196, 180);
        }
        const double rib = p.y < cuffMm + 22 ? 0.1 * std::sin(p.x * 2.4) : 0;
        const cv::Vec3d wool = cloth * (1 + 0.2 * weave.at<float>(at[0], at[1]) + rib);
        colour = ((1 - sleeve) * colour + sleeve * wool) * shadeAt(relief.height, at[0], at[1]);
        for (int c = 0; c < 3; ++c)
            pixel[c] = cv::saturate_cast<uchar>(colour[c] * alpha);
        pixel[3] = cv::saturate_cast<uchar>(255 * alpha);
    });
    return hand;
}

} // namespace deskpictures

#include "DeskTops.h"

#include "camera/Desk.h"
#include "camera/Noise.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace desktops {

namespace {

const cv::Size size(2000, 1600);
using Colour = cv::Vec3d;

int inPixels(double mm)
{
    return cvRound(mm * pxPerMm);
}

Colour near(const Colour& colour, double spread, cv::RNG& random)
{
    return {colour[0] + random.uniform(-spread, spread),
            colour[1] + random.uniform(-spread, spread),
            colour[2] + random.uniform(-spread, spread)};
}

cv::Scalar scalarOf(const Colour& colour)
{
    return {colour[0], colour[1], colour[2]};
}

/// Makes the ground lighter and darker by the map: 0 leaves it.
void modulate(cv::Mat& ground, const cv::Mat& map)
{
    ground.forEach<cv::Vec3b>([&](cv::Vec3b& pixel, const int* at) {
        const float factor = 1 + map.at<float>(at[0], at[1]);
        for (int c = 0; c < 3; ++c)
            pixel[c] = cv::saturate_cast<uchar>(pixel[c] * factor);
    });
}

cv::Mat board(const Colour& colour, double grain, cv::RNG& random)
{
    cv::Mat top(size, CV_8UC3, scalarOf(colour));
    modulate(top,
             grain * deskpictures::fractalNoise(size, {4, 4}, 2, 0.7, random) +
                 0.02 * deskpictures::fractalNoise(size, {500, 400}, 3, 0.5, random));
    return top;
}

/// Boards side by side with joints between them, their grain turned to one direction.
cv::Mat wood(cv::RNG& random)
{
    const bool isOak = random.uniform(0, 2) == 0;
    const cv::Mat& grain =
        deskpictures::deskTop(isOak ? deskpictures::Material::Oak : deskpictures::Material::Walnut);
    cv::Mat top;
    const double scale = random.uniform(0.4, 0.75);
    cv::resize(grain, top, {}, scale, scale, cv::INTER_AREA);
    if (random.uniform(0, 2))
        cv::flip(top, top, random.uniform(-1, 2));
    cv::copyMakeBorder(top,
                       top,
                       0,
                       std::max(0, size.height - top.rows),
                       0,
                       std::max(0, size.width - top.cols),
                       cv::BORDER_REFLECT);
    top = top(cv::Rect({0, 0}, size)).clone();
    if (random.uniform(0, 2)) {
        const int width = inPixels(random.uniform(60.0, 130.0));
        for (int y = random.uniform(0, width); y < size.height; y += width) {
            const cv::Mat plank = top(cv::Rect(0, y, size.width, std::min(width, size.height - y)));
            plank.convertTo(plank, -1, random.uniform(0.85, 1.12));
            cv::line(top, {0, y}, {size.width, y}, cv::Scalar(48, 34, 24), 2);
        }
    }
    if (random.uniform(0, 2)) {
        cv::transpose(top, top);
        cv::resize(top, top, size);
    }
    return top;
}

/// Threads across each other.
void weave(cv::Mat& top, double depth, cv::RNG& random)
{
    const double across = random.uniform(3.0, 5.0);
    const cv::Mat uneven = deskpictures::fractalNoise(size, {8, 8}, 2, 0.6, random);
    cv::Mat map(size, CV_32F);
    map.forEach<float>([&](float& value, const int* at) {
        const double u = std::sin(2 * CV_PI * at[0] / across), v = std::sin(2 * CV_PI * at[1] / across);
        value = static_cast<float>(depth * (0.5 * (u + v) + uneven.at<float>(at[0], at[1])));
    });
    modulate(top, map);
}

cv::Mat cloth(cv::RNG& random)
{
    static const std::array<Colour, 6> colours{
        {{60, 80, 130}, {140, 50, 50}, {90, 120, 90}, {170, 150, 120}, {205, 195, 175}, {110, 70, 120}}};
    cv::Mat top(size, CV_8UC3, scalarOf(near(colours[random.uniform(0, 6)], 15, random)));
    weave(top, random.uniform(0.05, 0.15), random);
    // Folds of the cloth.
    modulate(top, 0.1 * deskpictures::fractalNoise(size, {700, 260}, 2, 0.5, random));
    return top;
}

cv::Mat cuttingMat(cv::RNG& random)
{
    static const std::array<Colour, 4> colours{{{30, 95, 75}, {40, 60, 110}, {45, 45, 48}, {150, 155, 160}}};
    cv::Mat top = board(near(colours[random.uniform(0, 4)], 10, random), 0.04, random);
    const cv::Scalar line = random.uniform(0, 3) ? cv::Scalar(205, 215, 190) : cv::Scalar(215, 195, 70);
    for (int mm = 10; mm < 800; mm += 10) {
        const int thick = mm % 50 == 0 ? 2 : 1, at = inPixels(mm);
        cv::line(top, {at, 0}, {at, size.height}, line, thick, cv::LINE_AA);
        cv::line(top, {0, at}, {size.width, at}, line, thick, cv::LINE_AA);
    }
    return top;
}

void check(cv::Mat& top, int square, const Colour& second)
{
    for (int y = 0; y < size.height; y += square)
        for (int x = (y / square) % 2 * square; x < size.width; x += 2 * square)
            cv::rectangle(top, cv::Rect(x, y, square, square), scalarOf(second), cv::FILLED);
}

/// Stripes both ways, darker where they cross.
void gingham(cv::Mat& top, int square, const Colour& second)
{
    cv::Mat stripes(size, CV_8UC3, scalarOf(second));
    for (int pass = 0; pass < 2; ++pass) {
        const int end = pass ? size.width : size.height;
        for (int at = 0; at < end; at += 2 * square) {
            const int wide = std::min(square, end - at);
            const cv::Rect stripe =
                pass ? cv::Rect(at, 0, wide, size.height) : cv::Rect(0, at, size.width, wide);
            cv::addWeighted(top(stripe), 0.5, stripes(stripe), 0.5, 0, top(stripe));
        }
    }
}

void tile(cv::Mat& top, int square, const Colour& joint, cv::RNG& random)
{
    for (int y = 0; y < size.height; y += square) {
        for (int x = 0; x < size.width; x += square) {
            const cv::Mat part = top(cv::Rect({x, y}, cv::Size(square, square)) & cv::Rect({0, 0}, size));
            part.convertTo(part, -1, random.uniform(0.93, 1.05));
            cv::rectangle(top, cv::Rect(x, y, square, square), scalarOf(joint), 3);
        }
    }
}

cv::Mat patterned(cv::RNG& random)
{
    static const std::array<Colour, 5> colours{
        {{175, 55, 60}, {60, 90, 160}, {70, 130, 90}, {90, 90, 95}, {200, 170, 90}}};
    const Colour second = near({225, 220, 212}, 14, random);
    cv::Mat top(size, CV_8UC3, scalarOf(near(colours[random.uniform(0, 5)], 14, random)));
    const int square = inPixels(random.uniform(12.0, 45.0));
    switch (random.uniform(0, 5)) {
    case 0:
    case 1:
        check(top, square, second);
        break;
    case 2:
        top.setTo(scalarOf(second));
        gingham(top, square, near(colours[random.uniform(0, 5)], 14, random));
        break;
    case 3:
        for (int y = 0; y < size.height; y += 2 * square)
            cv::rectangle(top, cv::Rect(0, y, size.width, square), scalarOf(second), cv::FILLED);
        break;
    default:
        top.setTo(scalarOf(near({190, 182, 170}, 25, random)));
        tile(top, 2 * square, near({120, 115, 110}, 20, random), random);
    }
    weave(top, random.uniform(0.02, 0.08), random);
    return top;
}

} // namespace

cv::Mat make(Kind kind, cv::RNG& random)
{
    switch (kind) {
    case Kind::white: {
        const double level = random.uniform(228.0, 250.0);
        return board(near({level, level, level}, 3, random), random.uniform(0.002, 0.012), random);
    }
    case Kind::lightGrey: {
        const double level = random.uniform(180.0, 222.0);
        return board(near({level, level, level}, 6, random), random.uniform(0.01, 0.05), random);
    }
    case Kind::wood:
        return wood(random);
    case Kind::dark: {
        const double level = random.uniform(25.0, 80.0);
        return board(near({level, level, level}, 8, random), random.uniform(0.03, 0.15), random);
    }
    case Kind::cloth:
        return cloth(random);
    case Kind::cuttingMat:
        return cuttingMat(random);
    case Kind::patterned:
        break;
    }
    return patterned(random);
}

} // namespace desktops

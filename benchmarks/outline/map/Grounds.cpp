#include "Grounds.h"

namespace sheetmap {

namespace {

void multiply(cv::Mat& ground, const cv::Mat& factor)
{
    ground.forEach<Colour>([&](Colour& pixel, const int* at) { pixel *= factor.at<float>(at[0], at[1]); });
}

/// Noise of several sizes, the grain of boards or threads among it.
void roughen(cv::Mat& ground, Chance& chance)
{
    const int layers = chance.below(4);
    for (int i = 0; i < layers; ++i) {
        const double fine = chance.spread(1, 60), stretch = chance.happens(0.5) ? chance.spread(1, 40) : 1;
        cv::Mat noise = smoothNoise(ground.size(), fine * stretch, fine, chance);
        noise = 1 + chance.spread(0.01, 0.25) * noise;
        multiply(ground, noise);
    }
    if (chance.happens(0.25)) { // of the colours themselves
        std::array<cv::Mat, 3> planes;
        cv::split(ground, planes.data());
        const double fine = chance.spread(1, 80), depth = chance.spread(2, 30);
        for (cv::Mat& plane : planes)
            plane += depth * smoothNoise(ground.size(), fine, fine, chance);
        cv::merge(planes.data(), 3, ground);
    }
}

void rule(cv::Mat& ground, Chance& chance)
{
    const double step = chance.spread(4, 60), wide = chance.spread(0.4, 4);
    const Colour line = chance.happens(0.5) ? chance.any() : chance.grey(150, 255, 20);
    const bool isUp = chance.happens(0.8), isAcross = !isUp || chance.happens(0.7);
    const int major = chance.happens(0.5) ? 5 : 1000;
    const double strength = chance.between(0.15, 1);
    const auto worth = [&](double at) {
        const double near = std::abs(at / step - std::round(at / step)) * step;
        const bool isMajor = std::lround(at / step) % major == 0;
        return std::clamp((isMajor ? 2 : 1) * wide / 2 + 0.5 - near, 0.0, 1.0);
    };
    ground.forEach<Colour>([&](Colour& pixel, const int* at) {
        const double most = std::max(isUp ? worth(at[1]) : 0, isAcross ? worth(at[0]) : 0);
        pixel += static_cast<float>(strength * most) * (line - pixel);
    });
}

/// Squares, stripes both ways, tiles, boards: cells that differ.
void divide(cv::Mat& ground, Chance& chance)
{
    const double wide = chance.spread(5, 90), high = chance.happens(0.6) ? wide : chance.spread(5, 400);
    const Colour second = chance.happens(0.5) ? chance.any() : chance.near(ground.at<Colour>(0, 0), 60);
    const int kind = chance.below(4);
    const double uneven = chance.spread(0.01, 0.3), joint = chance.happens(0.5) ? chance.spread(0.3, 4) : 0;
    const bool isShifted = chance.happens(0.3);
    const Colour jointColour = chance.near(ground.at<Colour>(0, 0), 90);
    cv::Mat cells(128, 128, CV_32F);
    chance.generator().fill(cells, cv::RNG::UNIFORM, 1 - uneven, 1 + uneven);
    ground.forEach<Colour>([&](Colour& pixel, const int* at) {
        const int row = static_cast<int>(at[0] / high);
        const double x = at[1] + (isShifted ? 0.5 * wide * (row % 2) : 0), y = at[0];
        const int column = static_cast<int>(x / wide);
        const bool odd = column % 2 != 0, down = row % 2 != 0;
        if ((kind == 0 && odd != down) || (kind == 2 && odd))
            pixel = second;
        else if (kind == 1)
            pixel += 0.5F * static_cast<float>(odd + down) * (second - pixel);
        else if (kind == 3)
            pixel *= cells.at<float>(row % 128, column % 128);
        const double toJoint = std::min(std::min(x - column * wide, (column + 1) * wide - x),
                                        std::min(y - row * high, (row + 1) * high - y));
        if (toJoint < 0.5 * joint)
            pixel = jointColour;
    });
}

/// Leaves, dots, rings, patches: a printed cloth.
void print(cv::Mat& ground, Chance& chance)
{
    const int count = static_cast<int>(chance.spread(10, 400)), kind = chance.below(4);
    const double size = chance.spread(2, 50);
    const std::array<Colour, 3> palette{chance.any(), chance.any(), chance.any()};
    for (int i = 0; i < count; ++i) {
        const cv::Point at(chance.below(ground.cols), chance.below(ground.rows));
        const int a = cvRound(chance.between(0.5, 1) * size), b = cvRound(chance.between(0.2, 1) * size);
        const Colour& colour = palette[static_cast<size_t>(chance.below(3))];
        const int thick = chance.happens(0.8) ? -1 : 2;
        if (kind == 0)
            cv::circle(ground, at, std::max(1, a), colour, thick);
        else if (kind == 1)
            cv::ellipse(ground, at, {a, b}, chance.between(0, 180), 0, 360, colour, thick);
        else if (kind == 2)
            cv::rectangle(ground, {at.x, at.y, a, b}, colour, thick);
        else
            cv::line(ground, at, at + cv::Point(chance.below(a + 1) - a / 2, b), colour, 1 + chance.below(4));
    }
}

void weave(cv::Mat& ground, Chance& chance)
{
    const double u = chance.spread(2, 14), v = chance.happens(0.5) ? u : chance.spread(2, 14);
    const double depth = chance.spread(0.02, 0.3);
    ground.forEach<Colour>([&](Colour& pixel, const int* at) {
        pixel *= static_cast<float>(
            1 + 0.5 * depth * (std::sin(2 * CV_PI * at[1] / u) + std::sin(2 * CV_PI * at[0] / v)));
    });
}

} // namespace

Colour groundColour(Chance& chance)
{
    switch (chance.below(6)) {
    case 0:
        return chance.grey(215, 255, 6);
    case 1:
        return chance.grey(90, 225, 10);
    case 2:
        return chance.grey(10, 90, 12);
    case 3: { // woods
        const auto level = static_cast<float>(chance.between(50, 225));
        return {level,
                level * static_cast<float>(chance.between(0.62, 0.9)),
                level * static_cast<float>(chance.between(0.35, 0.75))};
    }
    default:
        return chance.any();
    }
}

cv::Mat makeGround(cv::Size size, Chance& chance, bool withPatterns)
{
    const Colour colour = groundColour(chance);
    cv::Mat ground(size, CV_32FC3, cv::Scalar(colour[0], colour[1], colour[2]));
    const int plain = groundKinds - patternedGrounds;
    const int kind = chance.below(withPatterns ? groundKinds + 2 : plain);
    if (kind >= plain) {
        const int layers = 1 + chance.below(2);
        for (int i = 0; i < layers; ++i) {
            switch (chance.below(4)) {
            case 0:
                rule(ground, chance);
                break;
            case 3:
                print(ground, chance);
                break;
            default:
                divide(ground, chance);
            }
        }
    }
    if (kind == 0 || chance.happens(0.15))
        weave(ground, chance);
    if (kind != 1)
        roughen(ground, chance);
    return ground;
}

} // namespace sheetmap

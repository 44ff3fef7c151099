#include "Threshold.h"

#include "Creases.h"
#include "PaperModel.h"
#include "SolidAreas.h"
#include "Specks.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace mirvak {

namespace {

constexpr double lightExponent = 1.4; // half of a stroke's light is its edge
constexpr double nearShare = 0.0042; // of the longer side: what a stroke is compared with, about 1.2 mm of A4
constexpr double areaShare = 0.0101; // likewise: what is wider is no stroke but an area, about 3 mm
constexpr int groundFactor = 4;      // areas are looked for on a smaller copy
constexpr double leastContrast = 0.12,
                 leastNoises = 5;        // of a stroke: of full scale, in deviations of the noise
constexpr int surelyInk = 128;           // darkness of areas without strokes
constexpr double largestSpeck = 0.00085; // of the longer side: a third of a full stop

int oddWindow(double share, int side)
{
    return std::max(3, static_cast<int>(share * side / 2) * 2 + 1);
}

// A lens mixes light, not levels.
DarknessTable darknessTable()
{
    DarknessTable table{};
    for (size_t i = 0; i < table.size(); ++i)
        table[i] = cv::saturate_cast<unsigned char>(
            255 * (1 - std::pow(static_cast<double>(i) / 255, lightExponent)));
    return table;
}

cv::Mat darknessOf(const cv::Mat& grey, const DarknessTable& table)
{
    cv::Mat dark;
    cv::LUT(grey, cv::Mat(1, 256, CV_8U, const_cast<unsigned char*>(table.data())), dark);
    return dark;
}

// The darkest close by: the ink of the stroke to which a place belongs, or which it borders on.
cv::Mat inkAround(const cv::Mat& dark)
{
    const int window = oddWindow(nearShare, std::max(dark.cols, dark.rows));
    cv::Mat ink;
    cv::dilate(dark, ink, cv::getStructuringElement(cv::MORPH_RECT, {window, window}));
    cv::blur(ink, ink, {window, window});
    return ink;
}

cv::Size reducedSize(const cv::Mat& picture)
{
    return {std::max(1, picture.cols / groundFactor), std::max(1, picture.rows / groundFactor)};
}

// Paper, or the area that a place belongs to: a tinted box, a highlighter's mark, a picture.
cv::Mat groundAround(const cv::Mat& dark)
{
    cv::Mat small, ground;
    cv::resize(dark, small, reducedSize(dark), 0, 0, cv::INTER_AREA);
    const int window = oddWindow(areaShare, std::max(small.cols, small.rows)), over = window + 2;
    cv::erode(small, small, cv::getStructuringElement(cv::MORPH_RECT, {window, window}));
    cv::dilate(small, small, cv::getStructuringElement(cv::MORPH_RECT, {over, over})); // its soft rim too
    cv::resize(small, ground, dark.size(), 0, 0, cv::INTER_LINEAR);
    return ground;
}

// Black is what is nearer to the ink than to the ground. `noise`: standard deviation, levels.
cv::Mat strokesOf(const cv::Mat& dark, double noise)
{
    const cv::Mat ink = inkAround(dark), ground = groundAround(dark);
    const int least = static_cast<int>(std::max(255 * leastContrast, leastNoises * lightExponent * noise));
    cv::Mat black(dark.size(), CV_8UC1);
    for (int y = 0; y < dark.rows; ++y) {
        const unsigned char *d = dark.ptr(y), *i = ink.ptr(y), *g = ground.ptr(y);
        unsigned char* out = black.ptr(y);
        for (int x = 0; x < dark.cols; ++x) {
            const bool isStroke = i[x] - g[x] >= least;
            // The ground is free of noise: an area near the limit does not break.
            const bool isBlack = isStroke ? d[x] > (i[x] + g[x]) / 2 : g[x] > surelyInk && d[x] > g[x] / 2;
            out[x] = isBlack ? 255 : 0;
        }
    }
    return black;
}

void fillAreas(cv::Mat& black, const cv::Mat& rgb, const cv::Mat& dark, const DarknessTable& table)
{
    cv::Mat small;
    cv::resize(rgb, small, reducedSize(rgb), 0, 0, cv::INTER_AREA);
    const cv::Mat limits = solidAreas(small, table, oddWindow(areaShare, std::max(small.cols, small.rows)));
    if (cv::countNonZero(limits) == 0)
        return;
    for (int y = 0; y < black.rows; ++y) {
        const unsigned char* limit = limits.ptr(std::min(y / groundFactor, limits.rows - 1));
        const unsigned char *d = dark.ptr(y), *p = rgb.ptr(y);
        unsigned char* out = black.ptr(y);
        for (int x = 0; x < black.cols; ++x) {
            const int from = limit[std::min(x / groundFactor, limits.cols - 1)];
            if (from > 0)
                out[x] = standsOut(p + 3 * x, d[x], table) > from ? 255 : 0;
        }
    }
}

} // namespace

void threshold(Image& image)
{
    const PaperModel model(image.pixels);
    Flattening how;
    how.whiteFrom = 1;
    how.noiseMargin = 0;
    flatten(image.pixels, model, how);
    cv::Mat grey;
    cv::cvtColor(image.pixels, grey, cv::COLOR_RGB2GRAY);
    const cv::Scalar paper = cv::mean(model.paper());
    const DarknessTable table = darknessTable();
    const cv::Mat dark = darknessOf(grey, table);
    cv::Mat black = strokesOf(dark, model.noise() * 255 / paper[1]);
    removeCreases(black, dark);
    fillAreas(black, image.pixels, dark, table);
    const double side = largestSpeck * std::max(black.cols, black.rows);
    removeSpecks(black, std::max(3, static_cast<int>(side * side)));
    cv::bitwise_not(black, black);
    cv::cvtColor(black, image.pixels, cv::COLOR_GRAY2RGB);
}

} // namespace mirvak

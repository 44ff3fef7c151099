#include "Sensor.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <cmath>

namespace deskpictures {
namespace {

constexpr int fullScale = 32767;      // signed, because OpenCV blurs that ten times faster than unsigned
constexpr int tileSide = 1024;        // a power of two: positions wrap by masking
constexpr int noiseUnit = 1024;       // one standard deviation in the noise tile
constexpr double readNoise = 0.0009;  // both as parts of full scale
constexpr double shotNoise = 0.00008; // variance for each unit of light

double decodeSrgb(double v)
{
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
}

double encodeSrgb(double v)
{
    return v <= 0.0031308 ? v * 12.92 : 1.055 * std::pow(v, 1 / 2.4) - 0.055;
}

const std::array<float, 256>& energyOf()
{
    static const std::array<float, 256> table = [] {
        std::array<float, 256> t{};
        for (int i = 0; i < 256; ++i)
            t.at(i) = static_cast<float>(fullScale * decodeSrgb(i / 255.0));
        return t;
    }();
    return table;
}

// sRGB with a gentle S: a camera's processing deepens the shadows and rolls the highlights off.
const std::vector<uchar>& toneCurve()
{
    static const std::vector<uchar> table = [] {
        std::vector<uchar> t(fullScale + 1);
        for (int i = 0; i <= fullScale; ++i) {
            const double v = encodeSrgb(static_cast<double>(i) / fullScale);
            const double s = v * v * (3 - 2 * v);
            t[i] = cv::saturate_cast<uchar>(255 * (0.82 * v + 0.18 * s));
        }
        return t;
    }();
    return table;
}

// Standard deviation of the noise for a level, for every 32nd of them.
const std::array<int, 1024>& sigmaOf()
{
    static const std::array<int, 1024> table = [] {
        std::array<int, 1024> t{};
        for (int i = 0; i < 1024; ++i)
            t.at(i) =
                static_cast<int>(fullScale * std::sqrt(readNoise * readNoise + shotNoise * (i / 1024.0)));
        return t;
    }();
    return table;
}

// The colour filter's interpolation leaves neighbouring pixels and the three channels related.
const cv::Mat& noiseTile()
{
    static const cv::Mat tile = [] {
        cv::RNG random(2024);
        cv::Mat grey(tileSide, tileSide, CV_32F);
        cv::Mat colour(tileSide, tileSide, CV_32FC3);
        random.fill(grey, cv::RNG::NORMAL, 0, 1);
        random.fill(colour, cv::RNG::NORMAL, 0, 1);
        cv::GaussianBlur(grey, grey, {}, 0.45, 0, cv::BORDER_REFLECT);
        cv::GaussianBlur(colour, colour, {}, 0.9, 0, cv::BORDER_REFLECT);
        cv::Mat greys;
        cv::merge(std::vector<cv::Mat>(3, grey), greys);
        cv::Mat result;
        cv::Mat(noiseUnit * (greys + 1.1 * colour)).convertTo(result, CV_16S);
        return result;
    }();
    return tile;
}

} // namespace

Sensor::Sensor(uint64_t seed) : m_random(seed) {}

cv::Mat Sensor::expose(const cv::Mat& albedo, const cv::Mat& light, const cv::Vec3d& gains, double lensBlurPx)
{
    const auto& energyOfColour = energyOf();
    cv::Mat result(albedo.size(), CV_16SC3);
    const cv::Vec3f gain(gains);
    for (int y = 0; y < albedo.rows; ++y) {
        const auto* from = albedo.ptr<cv::Vec3b>(y);
        const auto* brightness = light.ptr<float>(y);
        auto* to = result.ptr<cv::Vec3s>(y);
        for (int x = 0; x < albedo.cols; ++x)
            for (int c = 0; c < 3; ++c)
                to[x][c] = static_cast<short>(std::min(energyOfColour[from[x][c]] * brightness[x] * gain[c],
                                                       static_cast<float>(fullScale)));
    }
    cv::GaussianBlur(result, result, {5, 5}, lensBlurPx);
    return result;
}

cv::Mat Sensor::develop(const cv::Mat& energy)
{
    const auto& tone = toneCurve();
    const auto& sigma = sigmaOf();
    const cv::Mat& noise = noiseTile();
    const int shiftX = m_random.uniform(0, tileSide);
    const int shiftY = m_random.uniform(0, tileSide);
    cv::Mat picture(energy.size(), CV_8UC3);
    for (int y = 0; y < energy.rows; ++y) {
        const auto* from = energy.ptr<cv::Vec3s>(y);
        const auto* grain = noise.ptr<cv::Vec3s>((y + shiftY) & (tileSide - 1));
        auto* to = picture.ptr<cv::Vec3b>(y);
        for (int x = 0; x < energy.cols; ++x) {
            const cv::Vec3s& n = grain[(x + shiftX) & (tileSide - 1)];
            for (int c = 0; c < 3; ++c) {
                const int level = from[x][c] + sigma[from[x][c] >> 5] * n[c] / noiseUnit;
                to[x][c] = tone[std::clamp(level, 0, fullScale)];
            }
        }
    }
    cv::Mat soft;
    cv::GaussianBlur(picture, soft, {5, 5}, 1.1);
    cv::addWeighted(picture, 1.55, soft, -0.55, 0, picture);
    return picture;
}

} // namespace deskpictures

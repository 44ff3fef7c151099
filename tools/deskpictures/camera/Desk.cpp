#include "Desk.h"

#include "Noise.h"

#include <opencv2/imgproc.hpp>

#include <array>
#include <cmath>
#include <mutex>

namespace deskpictures {
namespace {

const cv::Size topSize(3560, 2730); // 548 x 420 mm: more than a camera over an A4 page sees

// A picture from a brightness map: albedo = colour x (1 + map), per channel a little different.
cv::Mat tint(const cv::Mat& map, cv::Vec3d colour, cv::Vec3d response)
{
    cv::Mat top(map.size(), CV_8UC3);
    top.forEach<cv::Vec3b>([&](cv::Vec3b& pixel, const int* at) {
        const float value = map.at<float>(at[0], at[1]);
        for (int c = 0; c < 3; ++c)
            pixel[c] = cv::saturate_cast<uchar>(colour[c] * (1 + response[c] * value));
    });
    return top;
}

// Wood: long fibres, the wide figure of the year rings, and short dark pores along the grain.
cv::Mat poreMap(cv::RNG& random)
{
    const cv::Mat fibre = valueNoise(topSize, {90, 2.2}, random);
    const cv::Mat place = valueNoise(topSize, {260, 40}, random);
    cv::Mat pores(topSize, CV_32F);
    pores.forEach<float>([&](float& pore, const int* at) {
        const float depth = fibre.at<float>(at[0], at[1]) - 0.62F + 0.12F * place.at<float>(at[0], at[1]);
        pore = -0.55F * std::max(0.0F, depth);
    });
    return pores;
}

// A year ring darkens slowly and ends more quickly, at part 0.8 of its width.
double yearRing(double part)
{
    const double turn = 0.8;
    const double x = part < turn ? part / turn : (1 - part) / (1 - turn);
    return x * x * (3 - 2 * x);
}

cv::Mat wood(const cv::Vec3d& colour, double figure, uint64_t seed)
{
    cv::RNG random(seed);
    const cv::Mat bend = fractalNoise(topSize, {2200, 520}, 3, 0.45, random);
    const cv::Mat fibre = fractalNoise(topSize, {700, 7}, 3, 0.6, random);
    const cv::Mat cloud = fractalNoise(topSize, {1500, 420}, 2, 0.5, random);
    cv::Mat map = poreMap(random);
    map.forEach<float>([&](float& value, const int* at) {
        const double across =
            at[0] / 95.0 + 3.6 * bend.at<float>(at[0], at[1]) + 0.06 * fibre.at<float>(at[0], at[1]);
        value += static_cast<float>(figure * (0.4 - yearRing(across - std::floor(across)))) +
                 0.13F * fibre.at<float>(at[0], at[1]) + 0.12F * cloud.at<float>(at[0], at[1]);
    });
    cv::GaussianBlur(map, map, {}, 0.8);
    return tint(map, colour, {0.8, 1.0, 1.2});
}

// Laminate and painted boards: a fine grain and next to no figure.
cv::Mat board(const cv::Vec3d& colour, double grain, double cloud, uint64_t seed)
{
    cv::RNG random(seed);
    const cv::Mat fine = fractalNoise(topSize, {5, 5}, 2, 0.7, random);
    const cv::Mat broad = fractalNoise(topSize, {900, 700}, 4, 0.5, random);
    return tint(grain * fine + cloud * broad, colour, {1, 1, 1});
}

// Grained leather cloth: dimples lit from one side.
cv::Mat leather(const cv::Vec3d& colour, uint64_t seed)
{
    cv::RNG random(seed);
    const cv::Mat height = fractalNoise(topSize, {15, 15}, 2, 0.5, random);
    cv::Mat slope;
    cv::Sobel(height, slope, CV_32F, 1, 1, 3);
    cv::Mat across;
    cv::Sobel(height, across, CV_32F, 0, 1, 3);
    const cv::Mat broad = fractalNoise(topSize, {800, 800}, 3, 0.5, random);
    return tint(0.22 * across + 0.08 * slope + 0.08 * broad, colour, {1, 1, 1});
}

cv::Mat makeTop(Material material)
{
    switch (material) {
    case Material::Light:
        return board({216, 214, 208}, 0.022, 0.018, 11);
    case Material::Oak:
        return wood({188, 146, 100}, 0.11, 23);
    case Material::Grey:
        return board({122, 126, 132}, 0.05, 0.035, 37);
    case Material::Dark:
        return leather({54, 50, 52}, 41);
    case Material::Walnut:
        return wood({112, 78, 56}, 0.17, 53);
    }
    return {};
}

} // namespace

const cv::Mat& deskTop(Material material)
{
    static std::array<std::once_flag, 5> made;
    static std::array<cv::Mat, 5> tops;
    const auto index = static_cast<size_t>(material);
    std::call_once(made.at(index), [&] { tops.at(index) = makeTop(material); });
    return tops.at(index);
}

} // namespace deskpictures

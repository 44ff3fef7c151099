#pragma once

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace sheetmap {

using Colour = cv::Vec3f; ///< red, green, blue, 0 to 255

/// Draws of one seed.
class Chance
{
public:
    explicit Chance(unsigned seed) : random_(seed * 2654435761U + 77U) { random_.next(); }

    double between(double low, double high) { return random_.uniform(low, high); }
    /// As likely between 1 and 2 as between 10 and 20.
    double spread(double low, double high) { return std::exp(between(std::log(low), std::log(high))); }
    int below(int end) { return random_.uniform(0, end); }
    bool happens(double share) { return random_.uniform(0.0, 1.0) < share; }
    cv::RNG& generator() { return random_; }

    Colour grey(double low, double high, double tint)
    {
        const double level = between(low, high);
        Colour colour;
        for (int c = 0; c < 3; ++c)
            colour[c] = static_cast<float>(std::clamp(level + between(-tint, tint), 0.0, 255.0));
        return colour;
    }
    Colour any()
    {
        return {static_cast<float>(between(5, 250)),
                static_cast<float>(between(5, 250)),
                static_cast<float>(between(5, 250))};
    }
    Colour near(const Colour& colour, double distance)
    {
        Colour other;
        for (int c = 0; c < 3; ++c)
            other[c] = std::clamp(colour[c] + static_cast<float>(between(-distance, distance)), 0.0F, 255.0F);
        return other;
    }

private:
    cv::RNG random_;
};

/// About -1 to 1, with detail of that many pixels each way: smooth noise, enlarged.
inline cv::Mat smoothNoise(cv::Size size, double acrossPx, double downPx, Chance& chance)
{
    const cv::Size cells(std::max(2, cvRound(size.width / acrossPx)) + 1,
                         std::max(2, cvRound(size.height / downPx)) + 1);
    cv::Mat coarse(cells, CV_32F), noise;
    chance.generator().fill(coarse, cv::RNG::UNIFORM, -1, 1);
    cv::resize(coarse, noise, size, 0, 0, cv::INTER_CUBIC);
    return noise;
}

} // namespace sheetmap

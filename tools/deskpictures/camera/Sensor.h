#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace deskpictures {

/// Lens, sensor and processing of a small camera. The light is kept in 15 bits, proportional to energy.
class Sensor
{
public:
    explicit Sensor(uint64_t seed);

    /// What falls on the sensor. @param albedo 8-bit sRGB colours @param light CV_32F, same size
    /// @param gains  red, green, blue, exposure included. @return CV_16SC3, already blurred by the lens
    static cv::Mat
    expose(const cv::Mat& albedo, const cv::Mat& light, const cv::Vec3d& gains, double lensBlurPx);

    /// Adds this picture's own noise, applies the tone curve and sharpens a little. @return 8-bit RGB
    cv::Mat develop(const cv::Mat& energy);

private:
    cv::RNG m_random;
};

} // namespace deskpictures

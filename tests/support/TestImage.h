#pragma once

#include "Image.h"

#include <opencv2/core.hpp>

/// An image handle as the camera library makes them, of one colour; released with MirvakImage_Release.
inline void* makeImageHandle(int width, int height, const cv::Scalar& rgb = {200, 100, 50})
{
    auto* image = new mirvak::Image;
    image->pixels = cv::Mat(height, width, CV_8UC3, rgb);
    return image;
}

#pragma once

#include <opencv2/core.hpp>
#include <turbojpeg.h>

#include <fstream>
#include <iterator>
#include <string>

// Pictures are RGB.

/// A JPEG file, decoded here and now without the library under test.
inline cv::Mat decodeJpeg(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
    auto* data = reinterpret_cast<unsigned char*>(bytes.data());
    const tjhandle decoder = tjInitDecompress();
    cv::Size size;
    int sampling = 0, colours = 0;
    tjDecompressHeader3(decoder, data, bytes.size(), &size.width, &size.height, &sampling, &colours);
    cv::Mat picture(size, CV_8UC3);
    tjDecompress2(decoder, data, bytes.size(), picture.data, size.width, 0, size.height, TJPF_RGB, 0);
    tjDestroy(decoder);
    return picture;
}

/// What the lab's camera shows in its n-th raw frame, converted by the formulas of ITU-R BT.601 with luma
/// from 16 to 235.
inline cv::Mat rawFrame(cv::Size size, unsigned n)
{
    constexpr double u = 150 - 128, v = 100 - 128;
    cv::Mat picture(size, CV_8UC3);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            const double luma = 255.0 / 219 * (int((x + y + 4 * n) & 0xff) - 16);
            picture.at<cv::Vec3b>(y, x) =
                cv::Vec3d(luma + 1.596 * v, luma - 0.392 * u - 0.813 * v, luma + 2.017 * u);
        }
    }
    return picture;
}

/// The mean difference of two pictures in grey levels, 255 when their sizes differ.
inline double meanDifference(const cv::Mat& a, const cv::Mat& b)
{
    return a.size() == b.size() && !a.empty() ? cv::norm(a, b, cv::NORM_L1) / double(a.total() * 3) : 255;
}

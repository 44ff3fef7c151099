#include "Picture.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>

Picture decodeJpeg(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
    auto* data = reinterpret_cast<unsigned char*>(bytes.data());
    const tjhandle decoder = tjInitDecompress();
    Picture picture;
    int sampling = 0, colours = 0;
    if (tjDecompressHeader3(
            decoder, data, bytes.size(), &picture.width, &picture.height, &sampling, &colours) == 0) {
        picture.rgb.resize(std::size_t(picture.width) * picture.height * 3);
        if (tjDecompress2(decoder,
                          data,
                          bytes.size(),
                          picture.rgb.data(),
                          picture.width,
                          0,
                          picture.height,
                          TJPF_RGB,
                          0) != 0)
            picture = {};
    }
    tjDestroy(decoder);
    return picture;
}

Picture rawFrame(int width, int height, unsigned n)
{
    constexpr double u = 150 - 128, v = 100 - 128;
    Picture picture{width, height, {}};
    picture.rgb.reserve(std::size_t(width) * height * 3);
    const auto clamped = [](double value) {
        return (unsigned char)std::lround(std::clamp(value, 0.0, 255.0));
    };
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double luma = 255.0 / 219 * (int((x + y + 4 * n) & 0xff) - 16);
            picture.rgb.push_back(clamped(luma + 1.596 * v));
            picture.rgb.push_back(clamped(luma - 0.392 * u - 0.813 * v));
            picture.rgb.push_back(clamped(luma + 2.017 * u));
        }
    }
    return picture;
}

double meanDifference(const Picture& a, const Picture& b)
{
    if (a.width != b.width || a.height != b.height || a.rgb.empty())
        return 255;
    long sum = 0;
    for (std::size_t i = 0; i < a.rgb.size(); ++i)
        sum += std::abs(a.rgb[i] - b.rgb[i]);
    return double(sum) / double(a.rgb.size());
}

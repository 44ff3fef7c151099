#include "Pictures.h"

#include <turbojpeg.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

namespace pictures {

constexpr int levelsApart = 6; // well beyond the codec's error of 2

Bytes jpeg(const cv::Mat& rgb, bool progressive)
{
    const std::unique_ptr<void, int (*)(tjhandle)> turbo(tjInitCompress(), tjDestroy);
    unsigned char* data = nullptr;
    unsigned long size = 0;
    const int result = tjCompress2(turbo.get(),
                                   rgb.data,
                                   rgb.cols,
                                   static_cast<int>(rgb.step),
                                   rgb.rows,
                                   TJPF_RGB,
                                   &data,
                                   &size,
                                   TJSAMP_444,
                                   95,
                                   progressive ? TJFLAG_PROGRESSIVE : 0);
    const std::unique_ptr<unsigned char, void (*)(unsigned char*)> owner(data, tjFree);
    if (result != 0)
        throw std::runtime_error(tjGetErrorStr2(turbo.get()));
    return Bytes(data, data + size);
}

Bytes solidJpeg(cv::Size size, cv::Scalar rgb)
{
    return jpeg(cv::Mat(size, CV_8UC3, rgb));
}

cv::Mat textured(cv::Size size)
{
    cv::Mat rgb(size, CV_8UC3);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x)
            rgb.at<cv::Vec3b>(y, x) = cv::Vec3b(static_cast<uchar>(x * 7 + y * 3),
                                                static_cast<uchar>(y * 5),
                                                static_cast<uchar>((x ^ y) * 9));
    }
    return rgb;
}

Bytes withoutHuffmanTables(const Bytes& jpeg)
{
    constexpr uint8_t startOfScan = 0xda, huffmanTable = 0xc4;
    Bytes out(jpeg.begin(), jpeg.begin() + 2);
    size_t at = 2;
    while (jpeg.at(at + 1) != startOfScan) {
        const size_t length = 2 + size_t(jpeg.at(at + 2) << 8 | jpeg.at(at + 3));
        if (jpeg[at + 1] != huffmanTable)
            out.insert(out.end(), jpeg.data() + at, jpeg.data() + at + length);
        at += length;
    }
    out.insert(out.end(), jpeg.data() + at, jpeg.data() + jpeg.size());
    return out;
}

void writeFilm(const TempDir& folder, int count, cv::Size size)
{
    std::filesystem::create_directories(folder.file("film"));
    for (int number = 0; number < count; ++number)
        folder.write("film/" + std::to_string(100 + number) + ".jpg",
                     solidJpeg(size, cv::Scalar::all(number * levelsApart)));
}

int numberOf(const cv::Mat& rgb)
{
    return (rgb.at<cv::Vec3b>(rgb.rows / 2, rgb.cols / 2)[1] + levelsApart / 2) / levelsApart;
}

} // namespace pictures

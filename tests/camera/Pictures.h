#pragma once

#include <opencv2/core.hpp>

#include <cstdint>
#include <string>
#include <vector>

/// Made pictures whose truth is known.
namespace pictures {

using Bytes = std::vector<uint8_t>;

/// JPEG, quality 95, 4:4:4, of RGB pixels.
Bytes jpeg(const cv::Mat& rgb, bool progressive = false);
/// JPEG of one colour. The codec gives flat colours back within 2 levels.
Bytes solidJpeg(cv::Size size, cv::Scalar rgb);
/// A picture with fine structure, so that no part of its coded data is idle.
cv::Mat textured(cv::Size size);
/// Without the segments that define Huffman tables, as some cameras send it.
Bytes withoutHuffmanTables(const Bytes& jpeg);
/// With an Exif segment that says how the stored pixels lie (1 to 8).
Bytes withOrientation(const Bytes& jpeg, uint8_t orientation);
void write(const std::string& path, const Bytes& bytes);
/// Writes `count` pictures 000.jpg, 001.jpg ... into `folder`, each of one grey whose level tells its number.
void writeNumbered(const std::string& folder, int count, cv::Size size);
/// The number of such a picture.
int numberOf(const cv::Mat& rgb);

} // namespace pictures

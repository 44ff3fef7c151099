#pragma once

#include "TempDir.h"

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
/// Writes `count` pictures into the folder's folder "film", in name order, each of one grey whose level tells
/// its number.
void writeFilm(const TempDir& folder, int count, cv::Size size);
/// The number of such a picture.
int numberOf(const cv::Mat& rgb);

} // namespace pictures

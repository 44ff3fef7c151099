#pragma once

#include <opencv2/core.hpp>

#include <vector>

/// `count` pages of text without any code: those of the virtual desk and lines of random letters in several
/// faces and sizes, each turned by another angle. CV_8UC3.
std::vector<cv::Mat> textPages(int count);

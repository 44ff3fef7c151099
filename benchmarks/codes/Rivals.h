#pragma once

#include <opencv2/core.hpp>

#include <optional>
#include <string>
#include <vector>

// What the reading of codes is measured against: plain passes over the whole picture (CV_8UC1), as a program
// makes them that only calls a library.

/// The texts that the program zbarimg finds; nothing when it is not installed.
std::optional<std::vector<std::string>> readByZBar(const cv::Mat& grey);
/// The texts that ZXing-C++ finds with its usual settings, in a child process: it may abort. What it had
/// found until then is lost, as it would be to the program.
std::vector<std::string> readByZXing(const cv::Mat& grey);

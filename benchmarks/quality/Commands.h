#pragma once

#include <opencv2/core.hpp>

#include <string>

/// Programs that people use from a command line.
namespace commands {

/// Whether a program of that name is installed.
bool isThere(const std::string& program);

/// Runs a command line in which %in and %out stand for files in the simple formats of Netpbm.
/// @param picture  CV_8UC3, RGB, or CV_8UC1  @return the same types; empty when the command fails
cv::Mat run(const std::string& line, const cv::Mat& picture);

} // namespace commands

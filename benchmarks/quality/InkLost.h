#pragma once

#include <opencv2/core.hpp>

/// The share of a page's print that is not to be found in what an operation has made of its photograph: cut
/// off, or painted over.
/// @param photo  CV_8UC3, RGB  @param ink  CV_8U, 255: the print in it
/// @param page   CV_8UC3, RGB: the result  @param toOld  from its pixels to those of the photograph
double inkLost(const cv::Mat& photo, const cv::Mat& ink, const cv::Mat& page, const cv::Matx33d& toOld);

/// The way back for programs that turn a whole picture about its middle, which stays the middle.
/// @param degrees  by how much it was turned, as skewLeft() counts
cv::Matx33d turnedAboutMiddle(const cv::Size& before, const cv::Size& after, double degrees);

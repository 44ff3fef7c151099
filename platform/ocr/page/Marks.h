#pragma once

#include <opencv2/core.hpp>

#include <vector>

namespace mirvak {

/// The marks of ink on a page that can be letters or parts of them.
struct Marks
{
    std::vector<cv::Rect> boxes; ///< px
    std::vector<cv::Rect> rules; ///< px, long lines across that were taken away
    int height = 0;              ///< px, of the usual mark: a small letter's height; 0 without any
    std::vector<cv::Rect> dust;  ///< px, lone specks with their soft rims, taken away
};

/// Finds the marks and takes away what is no text, in place: specks, rules, frames and pictures become
/// paper;
/// light letters on a dark bar become dark letters on paper.
/// @param grey CV_8UC1, evened out.
Marks cleanMarks(cv::Mat& grey);

} // namespace mirvak

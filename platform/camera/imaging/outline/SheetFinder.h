#pragma once

#include "Outline.h"

#include <opencv2/core.hpp>

#include <memory>
#include <vector>

namespace mirvak {

/// Finds all sheets that lie side by side before the camera: pages, cards, receipts, photographs. Works on a
/// reduced copy and keeps its buffers. One thread at a time.
class SheetFinder
{
public:
    SheetFinder();
    ~SheetFinder();
    SheetFinder(const SheetFinder&) = delete;
    SheetFinder& operator=(const SheetFinder&) = delete;

    /// In the order in which people read: row by row from the top, each from the left. They do not overlap.
    /// Empty when nothing stands out with confidence, and when of an open book only one half does.
    std::vector<Outline> find(const cv::Mat& rgb);

private:
    struct Work;
    std::unique_ptr<Work> work_;
};

/// The same with buffers kept per thread.
std::vector<Outline> findSheets(const cv::Mat& rgb);

} // namespace mirvak

#include "TestMarks.h"

#include <opencv2/imgproc.hpp>

using mirvak::Marks;

namespace testMarks {

void addText(Marks& marks, int left, int top, int rows, int letters)
{
    marks.height = height;
    for (int row = 0; row < rows; ++row) {
        for (int i = 0; i < letters; ++i) {
            if (i % 6 != 5)
                marks.boxes.emplace_back(left + i * step, top + row * rowPitch, step - 3, height);
        }
    }
}

Marks turned(const Marks& marks)
{
    Marks other;
    other.height = marks.height;
    for (const cv::Rect& box : marks.boxes)
        other.boxes.emplace_back(box.y, box.x, box.height, box.width);
    return other;
}

cv::Mat drawn(const Marks& marks, const cv::Size& size)
{
    cv::Mat page(size, CV_8UC1, cv::Scalar(255));
    for (const cv::Rect& box : marks.boxes)
        cv::rectangle(page, box, 20, cv::FILLED);
    return page;
}

size_t inkIn(const cv::Mat& page, const cv::Rect& part)
{
    return static_cast<size_t>(cv::countNonZero(page(part) < 128));
}

} // namespace testMarks

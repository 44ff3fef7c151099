#include "SkewLeft.h"

#include <opencv2/imgproc.hpp>

namespace {

double lineContrast(const cv::Mat& text, double degrees)
{
    const cv::Point2f middle(0.5F * static_cast<float>(text.cols), 0.5F * static_cast<float>(text.rows));
    cv::Mat turned, rows, steps;
    cv::warpAffine(text,
                   turned,
                   cv::getRotationMatrix2D(middle, degrees, 1),
                   text.size(),
                   cv::INTER_LINEAR,
                   cv::BORDER_REPLICATE);
    cv::reduce(turned, rows, 1, cv::REDUCE_SUM, CV_32F);
    cv::subtract(rows.rowRange(1, rows.rows), rows.rowRange(0, rows.rows - 1), steps);
    return steps.dot(steps);
}

} // namespace

double skewLeft(const cv::Mat& picture)
{
    constexpr double reach = 8, coarse = 0.25, fine = 0.01, part = 0.5;
    const cv::Size size(cvRound(part * picture.cols), cvRound(part * picture.rows));
    cv::Mat text =
        picture(cv::Rect({(picture.cols - size.width) / 2, (picture.rows - size.height) / 2}, size));
    if (text.channels() == 3)
        cv::cvtColor(text, text, cv::COLOR_RGB2GRAY);
    // Turning softens a picture a little, which not turning it would win by.
    constexpr double softer = 2; // pixels
    cv::GaussianBlur(text, text, {}, softer);
    double best = 0;
    const auto search = [&](double around, double width, double step) {
        double most = -1;
        const int steps = cvRound(width / step);
        for (int i = -steps; i <= steps; ++i) {
            const double angle = around + i * step;
            const double contrast = lineContrast(text, angle);
            if (contrast > most) {
                most = contrast;
                best = angle;
            }
        }
    };
    search(0, reach, coarse);
    search(best, coarse, 0.05);
    search(best, 0.05, fine);
    return best;
}

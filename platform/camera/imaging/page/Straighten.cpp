#include "Straighten.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {

// Pixel centres lie at whole numbers, so the outer edges of a picture are at -0.5 and size - 0.5.
std::array<cv::Point2f, 4> edgesOf(const cv::Point2d& corner, const cv::Size2d& size)
{
    const cv::Point2d from = corner - cv::Point2d(0.5, 0.5), to = from + cv::Point2d(size);
    return {cv::Point2d(from.x, from.y),
            cv::Point2d(to.x, from.y),
            cv::Point2d(to.x, to.y),
            cv::Point2d(from.x, to.y)};
}

// Fills a frame of `edge` pixels from the pixels beside it; what lies within stays untouched, which spares a
// copy of the page.
void continueOutwards(cv::Mat& rgb, int edge)
{
    if (edge == 0)
        return;
    const int width = rgb.cols, bottom = rgb.rows - edge;
    for (int y = edge; y < bottom; ++y) {
        auto* row = rgb.ptr<cv::Vec3b>(y);
        std::fill(row, row + edge, row[edge]);
        std::fill(row + width - edge, row + width, row[width - edge - 1]);
    }
    for (int i = 0; i < edge; ++i) {
        rgb.row(edge).copyTo(rgb.row(i));
        rgb.row(bottom - 1).copyTo(rgb.row(bottom + i));
    }
}

} // namespace

cv::Matx33d
straighten(const Image& picture, const Outline& outline, const PageShape& page, int margin, Image& straight)
{
    const int shorter = cvFloor(std::min(page.size.width, page.size.height));
    const int trim = std::clamp(margin, 0, std::max(0, (shorter - leastPage) / 2));
    const cv::Size kept(std::max(1, cvRound(page.size.width - 2 * trim)),
                        std::max(1, cvRound(page.size.height - 2 * trim)));
    const int edge = page.format && !page.format->isCard ? trim : 0;
    std::array<cv::Point2f, 4> from;
    std::copy(outline.corners.begin(), outline.corners.end(), from.begin());
    const cv::Mat back =
        cv::getPerspectiveTransform(edgesOf(cv::Point2d(-trim, -trim), page.size).data(), from.data());
    straight.pixels.create(kept + cv::Size(2 * edge, 2 * edge), CV_8UC3);
    cv::Mat inside = straight.pixels(cv::Rect({edge, edge}, kept));
    cv::warpPerspective(
        picture.pixels, inside, back, kept, cv::INTER_LINEAR | cv::WARP_INVERSE_MAP, cv::BORDER_REPLICATE);
    continueOutwards(straight.pixels, edge);
    straight.dpi = page.format ? page.dpi() : picture.dpi;
    return cv::Matx33d(back) * cv::Matx33d(1, 0, -edge, 0, 1, -edge, 0, 0, 1);
}

} // namespace mirvak

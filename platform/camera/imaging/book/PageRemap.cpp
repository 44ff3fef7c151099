#include "PageRemap.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {

constexpr int gridStep = 8; // pixels; a page bends little over them
constexpr int stripRows = 64;
constexpr double mostGrowth = 2; // of the picture's pixels, however a fit went wrong

cv::Mat
gridOf(const BookLook& look, const CylinderModel& model, const Remainders& remainders, const FlatPiece& piece)
{
    cv::Mat grid(piece.size.height / gridStep + 2, piece.size.width / gridStep + 2, CV_32FC2);
    const cv::Point2d unit(piece.area.width / piece.size.width, piece.area.height / piece.size.height);
    for (int y = 0; y < grid.rows; ++y) {
        for (int x = 0; x < grid.cols; ++x) {
            cv::Point2d flat =
                piece.area.tl() + cv::Point2d((x * gridStep + 0.5) * unit.x, (y * gridStep + 0.5) * unit.y);
            const Remainder* remainder = remainders[flat.x >= 0].get();
            if (remainder)
                flat.y += remainder->at(flat);
            grid.at<cv::Point2f>(y, x) = look.toFull(model.toFrame(flat));
        }
    }
    return grid;
}

void fillStrip(const cv::Mat& grid, int top, cv::Mat& map)
{
    for (int y = 0; y < map.rows; ++y) {
        const int row = (top + y) / gridStep;
        const float down = static_cast<float>((top + y) % gridStep) / gridStep;
        const cv::Point2f* upper = grid.ptr<cv::Point2f>(row);
        const cv::Point2f* lower = grid.ptr<cv::Point2f>(row + 1);
        cv::Point2f* to = map.ptr<cv::Point2f>(y);
        for (int first = 0; first < map.cols; first += gridStep) {
            const int cell = first / gridStep;
            const cv::Point2f left = upper[cell] + down * (lower[cell] - upper[cell]);
            const cv::Point2f right = upper[cell + 1] + down * (lower[cell + 1] - upper[cell + 1]);
            const cv::Point2f step = (right - left) / gridStep;
            for (int x = first; x < std::min(map.cols, first + gridStep); ++x)
                to[x] = left + static_cast<float>(x - first) * step;
        }
    }
}

} // namespace

FlatPiece pieceOf(const BookLook& look, const CylinderModel& model, const cv::Rect2d& area)
{
    double density = 0;
    constexpr int places = 5;
    for (int i = 0; i < places; ++i) {
        for (int j = 0; j < places; ++j) {
            const cv::Point2d at =
                area.tl() + cv::Point2d(area.width * (i + 0.5) / places, area.height * (j + 0.5) / places);
            const double step = 1e-3;
            const cv::Point2d seen =
                look.toFull(model.toFrame(at + cv::Point2d(0, step))) - look.toFull(model.toFrame(at));
            density = std::max(density, cv::norm(seen) / step);
        }
    }
    const double pixels = area.area() * density * density;
    const double most = mostGrowth * look.fullSize().area();
    if (pixels > most)
        density *= std::sqrt(most / pixels);
    return {area, {std::max(1, cvRound(area.width * density)), std::max(1, cvRound(area.height * density))}};
}

cv::Mat remapPiece(const cv::Mat& rgb,
                   const BookLook& look,
                   const CylinderModel& model,
                   const Remainders& remainders,
                   const FlatPiece& piece)
{
    const cv::Mat grid = gridOf(look, model, remainders, piece);
    cv::Mat flat(piece.size, CV_8UC3);
    for (int top = 0; top < flat.rows; top += stripRows) {
        const int rows = std::min(stripRows, flat.rows - top);
        cv::Mat map(rows, flat.cols, CV_32FC2);
        fillStrip(grid, top, map);
        cv::Mat strip = flat.rowRange(top, top + rows);
        cv::remap(rgb, strip, map, {}, cv::INTER_CUBIC, cv::BORDER_REPLICATE);
    }
    return flat;
}

} // namespace mirvak

#include "FlatView.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace mirvak {

namespace {
constexpr double viewSide = 500;
constexpr double mostSide = 1200;
} // namespace

FlatView viewPage(const BookLook& look, const CylinderModel& model, bool isRight)
{
    const cv::Point2d half = look.toFrame({look.green().cols - 0.5, look.green().rows - 0.5});
    double left = 0, right = 0, top = 1e9, bottom = -1e9;
    for (const double x : {-half.x, 0.0, half.x}) {
        for (const double y : {-half.y, half.y}) {
            const cv::Point2d flat = model.toFlat({x, y}, isRight);
            left = std::min(left, flat.x);
            right = std::max(right, flat.x);
            top = std::min(top, flat.y);
            bottom = std::max(bottom, flat.y);
        }
    }
    FlatView view;
    view.scale = std::min(1.0, viewSide / look.side()) * look.side() * model.focal;
    const double limit = mostSide / view.scale;
    left = isRight ? 0 : std::max(left, -limit);
    right = isRight ? std::min(right, limit) : 0;
    top = std::max(top, -limit / 2);
    bottom = std::min(bottom, limit / 2);
    const cv::Size size(std::max(8, cvRound((right - left) * view.scale)),
                        std::max(8, cvRound((bottom - top) * view.scale)));
    view.area = {left, top, size.width / view.scale, size.height / view.scale};
    if (!isRight)
        view.area.x = -view.area.width;
    cv::Mat map(size, CV_32FC2);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x)
            map.at<cv::Point2f>(y, x) = look.toPixel(model.toFrame(view.toFlat(cv::Point2d(x, y)), isRight));
    }
    cv::Mat soft;
    cv::blur(look.colours(), soft, {3, 3});
    cv::remap(soft, view.colours, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    cv::remap(cv::Mat(look.green().size(), CV_8UC1, cv::Scalar(255)),
              view.seen,
              map,
              {},
              cv::INTER_NEAREST,
              cv::BORDER_CONSTANT);
    return view;
}

} // namespace mirvak

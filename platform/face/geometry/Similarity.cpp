#include "Similarity.h"

#include "Picture.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace face {

namespace {

cv::Point2d meanOf(const std::vector<cv::Point2f>& points)
{
    cv::Point2d sum;
    for (const cv::Point2f point : points)
        sum += cv::Point2d(point);
    return sum / static_cast<double>(points.size());
}

// What the piece needs of the picture, with a little more for the interpolation.
cv::Rect neededPart(const cv::Mat& rgb, const Similarity& ontoPicture, cv::Size size)
{
    constexpr int more = 4;
    const auto w = static_cast<float>(size.width);
    const auto h = static_cast<float>(size.height);
    std::vector<cv::Point2f> corners;
    for (const cv::Point2f corner :
         {cv::Point2f(0, 0), cv::Point2f(w, 0), cv::Point2f(0, h), cv::Point2f(w, h)})
        corners.push_back(ontoPicture(corner));
    const cv::Rect2f box = cv::boundingRect(corners);
    return inside({box.x - more, box.y - more, box.width + 2 * more, box.height + 2 * more}, rgb);
}

// What is made larger is mostly a small portrait, coded with few bytes: that takes away the edges of its
// blocks.
cv::Mat softened(const cv::Mat& rgb)
{
    constexpr double radius = 0.6;
    cv::Mat soft;
    cv::GaussianBlur(rgb, soft, {}, radius);
    return soft;
}

} // namespace

double Similarity::scale() const
{
    return std::hypot(a, b);
}

cv::Point2f Similarity::operator()(cv::Point2f point) const
{
    return {static_cast<float>(a * point.x - b * point.y + c),
            static_cast<float>(b * point.x + a * point.y + d)};
}

Similarity nearest(const std::vector<cv::Point2f>& from, const std::vector<cv::Point2f>& to)
{
    const cv::Point2d fromMean = meanOf(from);
    const cv::Point2d toMean = meanOf(to);
    double along = 0, across = 0, spread = 0;
    for (size_t i = 0; i < from.size(); ++i) {
        const cv::Point2d f = cv::Point2d(from[i]) - fromMean;
        const cv::Point2d t = cv::Point2d(to[i]) - toMean;
        along += f.dot(t);
        across += f.cross(t);
        spread += f.dot(f);
    }
    const double a = along / spread;
    const double b = across / spread;
    return {a, b, toMean.x - a * fromMean.x + b * fromMean.y, toMean.y - b * fromMean.x - a * fromMean.y};
}

cv::Mat cutOut(const cv::Mat& rgb, const Similarity& ontoPicture, cv::Size size)
{
    const cv::Rect part = neededPart(rgb, ontoPicture, size);
    if (part.empty())
        return {size, CV_8UC3, cv::Scalar::all(0)};
    // A warp looks at few pixels for each of its own: where it makes smaller, that is done before.
    const double shrink = std::max(1.0, ontoPicture.scale());
    const cv::Mat source =
        shrink > 1 ? resized(rgb(part), cv::Size(cvRound(part.width / shrink), cvRound(part.height / shrink)))
                   : softened(rgb(part));
    const double kx = static_cast<double>(source.cols) / part.width;
    const double ky = static_cast<double>(source.rows) / part.height;
    // Pixel i covers i to i + 1: its middle moves by half of what the scale leaves.
    const cv::Matx33d toSource(kx, 0, (0.5 - part.x) * kx - 0.5, 0, ky, (0.5 - part.y) * ky - 0.5, 0, 0, 1);
    const cv::Matx23d m = ontoPicture.matrix();
    const cv::Matx33d whole(m(0, 0), m(0, 1), m(0, 2), m(1, 0), m(1, 1), m(1, 2), 0, 0, 1);
    cv::Mat piece;
    cv::warpAffine(source,
                   piece,
                   (toSource * whole).get_minor<2, 3>(0, 0),
                   size,
                   cv::INTER_CUBIC | cv::WARP_INVERSE_MAP);
    return piece;
}

} // namespace face

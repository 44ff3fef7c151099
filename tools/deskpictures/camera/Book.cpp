// Coordinates: desk (mm, see View.h); spread (mm on the desk but turned with the book: across from the spine,
// down from the middle); page (mm along the paper from the spine, and down).
#include "Book.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace deskpictures {
namespace {

constexpr double coverMm = 2.4; // the cover stands out beyond the leaves
constexpr double leavesMm = 3;  // the edges of the leaves below, seen beyond the page
constexpr double gutterMm = 9;  // how far the darkness reaches out of the middle

// Cuts the rays of a view's pixels with the book's surface.
class Caster
{
public:
    Caster(const View& view, const BookShape& shape)
        : m_shape(shape), m_toSpread(view.pageToPicture().inv()), m_eyeHeight(view.eyeMm().z)
    {
        const cv::Point3d eye = view.eyeMm();
        const cv::Vec3d onSpread = m_toSpread * view.deskToPicture() * cv::Vec3d(eye.x, eye.y, 1);
        m_eye = {onSpread[0] / onSpread[2], onSpread[1] / onSpread[2]};
    }

    /// @return across and down (mm)
    cv::Point2d cast(double x, double y) const
    {
        const cv::Vec3d p = m_toSpread * cv::Vec3d(x, y, 1);
        const cv::Point2d plane(p[0] / p[2], p[1] / p[2]);
        cv::Point2d hit = plane;
        // The rays are nearly upright and the paper rises by about one in one at most: each round gains a
        // digit.
        for (int i = 0; i < 4; ++i)
            hit = plane + (m_eye - plane) * (m_shape.height(std::abs(hit.x)) / m_eyeHeight);
        return hit;
    }

private:
    const BookShape& m_shape;
    cv::Matx33d m_toSpread;
    cv::Point2d m_eye;
    double m_eyeHeight;
};

cv::Point2f toTexture(const cv::Matx33d& pageToTexture, double x, double y)
{
    return {static_cast<float>(pageToTexture(0, 0) * x + pageToTexture(0, 2)),
            static_cast<float>(pageToTexture(1, 1) * y + pageToTexture(1, 2))};
}

// Paper lit by a lamp at the upper left; the valley in the middle gets little light from anywhere.
double brightness(double across, double slope)
{
    const double tilt = across < 0 ? -slope : slope; // rise towards the right
    const double lamp = (1 + 0.42 * tilt) / std::sqrt(1 + tilt * tilt);
    const double lambert = 0.45 + 0.55 * std::clamp(lamp, 0.0, 1.4);
    const double depth = std::abs(across) / gutterMm;
    return lambert *
           (1 - 0.6 * std::exp(-depth * depth) - 0.15 * std::exp(-depth / 0.12) - 0.1 * std::exp(-depth / 3));
}

// The brightness for every stepMm from the left edge to the right: it does not depend on the height in the
// picture.
class BrightnessTable
{
public:
    explicit BrightnessTable(const BookShape& shape) : m_half(shape.halfWidth() + 10)
    {
        for (int i = 0; i * stepMm <= 2 * m_half; ++i) {
            const double across = i * stepMm - m_half;
            m_values.push_back(static_cast<float>(brightness(across, shape.slope(std::abs(across)))));
        }
    }
    float at(double across) const
    {
        const double index = std::clamp((across + m_half) / stepMm, 0.0, m_values.size() - 1.0);
        return m_values[static_cast<size_t>(index)];
    }

private:
    static constexpr double stepMm = 0.05; // half a pixel of the largest picture
    double m_half;
    std::vector<float> m_values;
};

// What the pages hide shows through the crease only.
const cv::Vec4b hidden(72, 36, 40, 255);

// The cover and the edges of the leaves below, where the page itself does not hide them. Premultiplied.
cv::Vec4b rimColour(cv::Point2d at, cv::Size2d halfOpenMm, double pxPerMm)
{
    const auto coverage = [pxPerMm](double insideMm) {
        return std::clamp(insideMm * pxPerMm + 0.5, 0.0, 1.0);
    };
    const double out = std::abs(at.x);
    const double below = halfOpenMm.height - std::abs(at.y);
    if (out + 1 < halfOpenMm.width && below > 1)
        return hidden;
    const double cover = coverage(std::min(halfOpenMm.width + leavesMm + coverMm - out, below + coverMm));
    const double leaves = coverage(std::min(halfOpenMm.width + leavesMm - out, below));
    const double line = 0.78 + 0.12 * std::sin(out * 13) + 0.05 * std::sin(out * 31 + at.y * 0.05);
    const cv::Vec3d colour = (1 - leaves) * cv::Vec3d(72, 36, 40) + leaves * line * cv::Vec3d(226, 217, 196);
    return {cv::saturate_cast<uchar>(colour[0] * cover),
            cv::saturate_cast<uchar>(colour[1] * cover),
            cv::saturate_cast<uchar>(colour[2] * cover),
            cv::saturate_cast<uchar>(255 * cover)};
}

void layOverPremultiplied(cv::Mat& ground, const cv::Mat& colours)
{
    ground.forEach<cv::Vec4b>([&](cv::Vec4b& pixel, const int* at) {
        const cv::Vec4b& over = colours.at<cv::Vec4b>(at[0], at[1]);
        for (int c = 0; c < 4; ++c)
            pixel[c] = static_cast<uchar>(std::min(255, over[c] + pixel[c] * (255 - over[3]) / 255));
    });
}

} // namespace

Book::Book(QImage left, QImage right, cv::Size2d pageMm)
    : m_left(std::move(left)), m_right(std::move(right)), m_pageMm(pageMm), m_shape(pageMm.width)
{
}

Layer Book::see(const View& view) const
{
    const cv::Size size = view.picturePx();
    cv::Matx33d leftToPage;
    cv::Matx33d rightToPage;
    const cv::Mat left = pageTexture(m_left, m_pageMm, view.pxPerMm(), leftToPage);
    const cv::Mat right = pageTexture(m_right, m_pageMm, view.pxPerMm(), rightToPage);
    const cv::Matx33d toLeft = leftToPage.inv();
    const cv::Matx33d toRight = rightToPage.inv();
    const Caster caster(view, m_shape);
    const BrightnessTable brightnessAt(m_shape);
    const cv::Size2d halfOpen(m_shape.halfWidth(), m_pageMm.height / 2);
    Layer layer{cv::Mat(size, CV_8UC4), cv::Mat(size, CV_32F)};
    cv::Mat leftMap(size, CV_32FC2);
    cv::Mat rightMap(size, CV_32FC2);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            const cv::Point2d hit = caster.cast(x, y);
            // Each page runs on beyond the spine, where its texture is transparent: that smooths the crease.
            const double half = m_pageMm.width / 2;
            leftMap.at<cv::Point2f>(y, x) = toTexture(toLeft, half - m_shape.alongPage(-hit.x), hit.y);
            rightMap.at<cv::Point2f>(y, x) = toTexture(toRight, m_shape.alongPage(hit.x) - half, hit.y);
            const cv::Vec4b rim = rimColour(hit, halfOpen, view.pxPerMm());
            layer.colours.at<cv::Vec4b>(y, x) = rim;
            layer.light.at<float>(y, x) = 1 + (brightnessAt.at(hit.x) - 1) * static_cast<float>(rim[3]) / 255;
        }
    for (const auto& [texture, map] : {std::pair(left, leftMap), std::pair(right, rightMap)}) {
        cv::Mat page;
        cv::remap(texture, page, map, {}, cv::INTER_CUBIC, cv::BORDER_CONSTANT, cv::Scalar::all(0));
        layOverPremultiplied(layer.colours, page);
    }
    return layer;
}

cv::Point2d Book::see(const View& view, bool right, cv::Point2d pageMm) const
{
    const double out = m_shape.fromSpine(right ? pageMm.x : m_pageMm.width - pageMm.x);
    const cv::Point2d desk = view.pageToDesk({right ? out : -out, pageMm.y - m_pageMm.height / 2});
    return view.project({desk.x, desk.y, m_shape.height(out)});
}

std::vector<Book::GridPoint> Book::grid(const View& view, double stepMm) const
{
    std::vector<GridPoint> points;
    for (const bool right : {false, true})
        for (int row = 0; row * stepMm <= m_pageMm.height; ++row)
            for (int column = 0; column * stepMm <= m_pageMm.width; ++column) {
                const cv::Point2d page(column * stepMm, row * stepMm);
                points.push_back({right, page, see(view, right, page)});
            }
    return points;
}

std::array<cv::Point2d, 4> Book::corners(const View& view) const
{
    const double width = m_pageMm.width;
    const double height = m_pageMm.height;
    return {see(view, false, {0, 0}),
            see(view, true, {width, 0}),
            see(view, true, {width, height}),
            see(view, false, {0, height})};
}

} // namespace deskpictures

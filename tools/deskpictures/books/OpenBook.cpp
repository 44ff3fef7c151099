// Coordinates: desk and picture as in View.h; spread (mm on the desk, turned with the book: across from the
// spine, down from the middle); page (mm along the paper).
#include "OpenBook.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

namespace deskpictures {
namespace {

constexpr double stepMm = 0.05; // of the tables over the cross section: half a pixel of the largest picture
constexpr double reachMm = 320; // they end there, on both sides
constexpr int tableSize = static_cast<int>(2 * reachMm / stepMm) + 1;
constexpr double coverHeightMm = 2;
const cv::Vec3d leafColour(226, 217, 196);
const cv::Vec4b hidden(60, 44, 40, 255); // shows through the crease only

int indexOf(double across)
{
    return static_cast<int>(std::clamp((across + reachMm) / stepMm, 0.0, tableSize - 1.0));
}

double acrossOf(int index)
{
    return index * stepMm - reachMm;
}

/// The steepest direction, seen from each place, to anything on one side: its slope.
/// @param direction  1: what lies to the right  -1: to the left
std::vector<float> horizon(const std::vector<float>& heights, int direction)
{
    constexpr int skip = 20; // every millimetre is enough for shadows
    std::vector<float> slopes(heights.size());
    for (int i = 0; i < tableSize; i += skip) {
        double steepest = 0;
        for (int j = i + direction * skip; j >= 0 && j < tableSize && std::abs(j - i) < 3000;
             j += direction * skip)
            steepest = std::max(steepest, (heights[j] - heights[i]) / (std::abs(j - i) * stepMm));
        for (int k = i; k < std::min(i + skip, tableSize); ++k)
            slopes[k] = static_cast<float>(steepest);
    }
    return slopes;
}

double sine(double slope)
{
    return slope / std::sqrt(1 + slope * slope);
}

cv::Point2f toTexture(const cv::Matx33d& pageToTexture, double x, double y)
{
    return {static_cast<float>(pageToTexture(0, 0) * x + pageToTexture(0, 2)),
            static_cast<float>(pageToTexture(1, 1) * y + pageToTexture(1, 2))};
}

void layPage(cv::Mat& ground, const cv::Mat& texture, const cv::Mat& map)
{
    cv::Mat page;
    cv::remap(texture, page, map, {}, cv::INTER_CUBIC, cv::BORDER_CONSTANT, cv::Scalar::all(0));
    ground.forEach<cv::Vec4b>([&](cv::Vec4b& pixel, const int* at) {
        const cv::Vec4b& over = page.at<cv::Vec4b>(at[0], at[1]);
        for (int c = 0; c < 4; ++c)
            pixel[c] = static_cast<uchar>(std::min(255, over[c] + pixel[c] * (255 - over[3]) / 255));
    });
}

} // namespace

OpenBook::OpenBook(const BookForm& form, BookLight light)
    : m_form(form), m_light(light), m_left(form.pageMm.width, form.left),
      m_right(form.pageMm.width, form.right)
{
}

double OpenBook::height(double across) const
{
    const bool isRight = across >= 0;
    const BookShape& shape = isRight ? m_right : m_left;
    const double out = std::abs(across);
    const double beyond = out - shape.halfWidth();
    if (beyond <= 0)
        return shape.height(out);
    // The leaves below form a slope down to the cover.
    const double leaves = std::max(0.5, isRight ? m_form.leavesRightMm : m_form.leavesLeftMm);
    const double edge = shape.height(shape.halfWidth());
    return std::max(beyond < leaves + m_form.coverMm ? coverHeightMm : 0.0,
                    edge + (coverHeightMm - edge) * beyond / leaves);
}

std::vector<float> OpenBook::lightTable() const
{
    std::vector<float> heights(tableSize);
    for (int i = 0; i < tableSize; ++i)
        heights[i] = static_cast<float>(height(acrossOf(i)));
    const std::vector<float> toLeft = horizon(heights, -1);
    const std::vector<float> toRight = horizon(heights, 1);
    const double up = std::sqrt(1 - m_light.lampAcross * m_light.lampAcross);
    const double lampSlope = up / std::max(0.05, std::abs(m_light.lampAcross));
    std::vector<float> table(tableSize, 1);
    for (int i = 1; i + 1 < tableSize; ++i) {
        const double slope = (heights[i + 1] - heights[i - 1]) / (2 * stepMm);
        // A strip between two horizons gets half the difference of the sines of its limits, measured from its
        // own upright.
        const double turn = std::atan(slope);
        const double right = std::sin(CV_PI / 2 - std::max(std::atan(toRight[i]) - turn, 0.0));
        const double left = std::sin(CV_PI / 2 - std::max(std::atan(toLeft[i]) + turn, 0.0));
        const double sky = std::clamp((left + right) / 2, 0.0, 1.0);
        const double normal = 1 / std::sqrt(1 + slope * slope);
        const double facing = std::max(0.0, (up - slope * m_light.lampAcross) * normal) / up;
        const double wall = m_light.lampAcross < 0 ? toLeft[i] : toRight[i];
        // The lamp is wide: it disappears behind a crest little by little.
        const double seen = std::clamp(0.5 + (sine(lampSlope) - sine(wall)) / 0.25, 0.0, 1.0);
        const double lit = m_light.ambient * sky + (1 - m_light.ambient) * std::min(facing, 1.35) * seen;
        table[i] = static_cast<float>(lit + 0.18 * (1 - sky)); // paper also lights paper
    }
    cv::GaussianBlur(table, table, {0, 0}, 1 / stepMm, 1);
    return table;
}

/// For each place of the desk's plane: where across the ray to it hits the book first.
std::vector<float> OpenBook::hitTable(double eyeAcross, double eyeHeight) const
{
    const double top = 90;    // higher than any page stands
    const double fall = 0.75; // less than any crest is high
    std::vector<float> table(tableSize);
    for (int i = 0; i < tableSize; ++i) {
        const double plane = acrossOf(i);
        const auto at = [&](double z) { return plane + (eyeAcross - plane) * z / eyeHeight; };
        const auto above = [&](double z) { return z - height(at(z)); };
        double high = top;
        while (high > 0 && above(high - fall) >= 0)
            high -= fall;
        double low = std::max(0.0, high - fall);
        for (int step = 0; step < 14; ++step) {
            const double middle = (low + high) / 2;
            (above(middle) < 0 ? low : high) = middle;
        }
        table[i] = static_cast<float>(at(low));
    }
    return table;
}

cv::Vec4b OpenBook::rim(cv::Point2d hit, cv::Point2d plane, double pxPerMm) const
{
    const auto coverage = [pxPerMm](double insideMm) {
        return std::clamp(insideMm * pxPerMm + 0.5, 0.0, 1.0);
    };
    const bool isRight = hit.x >= 0;
    const double half = (isRight ? m_right : m_left).halfWidth();
    const double leavesMm = isRight ? m_form.leavesRightMm : m_form.leavesLeftMm;
    const double halfHeight = m_form.pageMm.height / 2;
    const double out = std::abs(hit.x);
    const double below = halfHeight - std::abs(hit.y);
    if (out + 1 < half && below > 1)
        return hidden;
    const double outer = half + leavesMm + m_form.coverMm;
    const double cover = std::max(coverage(std::min(outer - out, below)),
                                  coverage(std::min((plane.x >= 0 ? m_right : m_left).halfWidth() + leavesMm +
                                                        m_form.coverMm - std::abs(plane.x),
                                                    halfHeight + m_form.coverMm - std::abs(plane.y))));
    const double leaves = coverage(std::min(half + leavesMm - out, below));
    const double line = 0.78 + 0.12 * std::sin(out * 13) + 0.05 * std::sin(out * 31 + hit.y * 0.05);
    const cv::Vec3d colour = (1 - leaves) * cv::Vec3d(m_form.coverColour) + leaves * line * leafColour;
    return {cv::saturate_cast<uchar>(colour[0] * cover),
            cv::saturate_cast<uchar>(colour[1] * cover),
            cv::saturate_cast<uchar>(colour[2] * cover),
            cv::saturate_cast<uchar>(255 * cover)};
}

Layer OpenBook::see(const View& view, const QImage& left, const QImage& right) const
{
    const cv::Size size = view.picturePx();
    const cv::Size2d pageMm = m_form.pageMm;
    cv::Matx33d leftToPage;
    cv::Matx33d rightToPage;
    const cv::Mat leftTexture = pageTexture(left, pageMm, view.pxPerMm(), leftToPage);
    const cv::Mat rightTexture = pageTexture(right, pageMm, view.pxPerMm(), rightToPage);
    const cv::Matx33d toLeft = leftToPage.inv();
    const cv::Matx33d toRight = rightToPage.inv();
    const cv::Matx33d toSpread = view.pageToPicture().inv();
    const cv::Vec3d eyeOnSpread =
        toSpread * view.deskToPicture() * cv::Vec3d(view.eyeMm().x, view.eyeMm().y, 1);
    const cv::Point2d eye(eyeOnSpread[0] / eyeOnSpread[2], eyeOnSpread[1] / eyeOnSpread[2]);
    const std::vector<float> hits = hitTable(eye.x, view.eyeMm().z);
    const std::vector<float> lights = lightTable();
    Layer layer{cv::Mat(size, CV_8UC4), cv::Mat(size, CV_32F)};
    cv::Mat leftMap(size, CV_32FC2);
    cv::Mat rightMap(size, CV_32FC2);
    layer.light.forEach<float>([&](float& light, const int* at) {
        const cv::Vec3d p = toSpread * cv::Vec3d(at[1], at[0], 1);
        const cv::Point2d plane(p[0] / p[2], p[1] / p[2]);
        const double place = std::clamp((plane.x + reachMm) / stepMm, 0.0, tableSize - 1.001);
        const auto i = static_cast<int>(place);
        // Between two places of the table one may be hidden behind a crest: no mixing over a jump.
        const double jump = hits[i + 1] - hits[i];
        const double x = hits[i] + (std::abs(jump) < 10 * stepMm ? (place - i) * jump : 0);
        const cv::Point2d hit(x, plane.y + (eye.y - plane.y) * height(x) / view.eyeMm().z);
        // Each page runs on beyond the spine, where its texture is transparent: that smooths the crease.
        const double half = pageMm.width / 2;
        leftMap.at<cv::Point2f>(at[0], at[1]) = toTexture(toLeft, half - m_left.alongPage(-hit.x), hit.y);
        rightMap.at<cv::Point2f>(at[0], at[1]) = toTexture(toRight, m_right.alongPage(hit.x) - half, hit.y);
        const cv::Vec4b edge = rim(hit, plane, view.pxPerMm());
        layer.colours.at<cv::Vec4b>(at[0], at[1]) = edge;
        light = 1 + (lights[indexOf(hit.x)] - 1) * static_cast<float>(edge[3]) / 255;
    });
    layPage(layer.colours, leftTexture, leftMap);
    layPage(layer.colours, rightTexture, rightMap);
    return layer;
}

cv::Point2d OpenBook::toPicture(const View& view, bool isRight, cv::Point2d pageMm) const
{
    const BookShape& shape = isRight ? m_right : m_left;
    const double out = shape.fromSpine(isRight ? pageMm.x : m_form.pageMm.width - pageMm.x);
    const cv::Point2d desk = view.pageToDesk({isRight ? out : -out, pageMm.y - m_form.pageMm.height / 2});
    return view.project({desk.x, desk.y, shape.height(out)});
}

} // namespace deskpictures

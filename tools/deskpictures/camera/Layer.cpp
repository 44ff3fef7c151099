#include "Layer.h"

#include "Desk.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace deskpictures {
namespace {

constexpr int rimPx = 6; // of the texture; wider than the cubic's reach
// A little more than one texture pixel to a picture pixel keeps the letters crisp without making stairs.
constexpr double textureReserve = 1.2;

} // namespace

cv::Mat pageTexture(const QImage& page, cv::Size2d pageMm, double pxPerMm, cv::Matx33d& textureToPage)
{
    const cv::Mat whole(page.height(),
                        page.width(),
                        CV_8UC4,
                        const_cast<uchar*>(page.constBits()),
                        static_cast<size_t>(page.bytesPerLine()));
    const double factor = std::min(1.0, textureReserve * pxPerMm * pageMm.width / page.width());
    cv::Mat reduced;
    if (factor < 1)
        cv::resize(whole, reduced, {}, factor, factor, cv::INTER_AREA);
    else
        reduced = whole;
    cv::Mat texture;
    cv::copyMakeBorder(reduced, texture, rimPx, rimPx, rimPx, rimPx, cv::BORDER_CONSTANT, cv::Scalar::all(0));
    const double mmX = pageMm.width / reduced.cols;
    const double mmY = pageMm.height / reduced.rows;
    textureToPage = {mmX,
                     0,
                     (0.5 - rimPx) * mmX - pageMm.width / 2,
                     0,
                     mmY,
                     (0.5 - rimPx) * mmY - pageMm.height / 2,
                     0,
                     0,
                     1};
    return texture;
}

FlatLayer::FlatLayer(const QImage& page, cv::Size2d pageMm, double pxPerMm)
    : m_texture(pageTexture(page, pageMm, pxPerMm, m_textureToPage))
{
}

cv::Mat FlatLayer::warp(const cv::Matx33d& pageToPicture, cv::Size picturePx) const
{
    cv::Mat result;
    cv::warpPerspective(m_texture,
                        result,
                        pageToPicture * m_textureToPage,
                        picturePx,
                        cv::INTER_CUBIC,
                        cv::BORDER_CONSTANT,
                        cv::Scalar::all(0));
    return result;
}

cv::Mat seeDesk(const cv::Mat& top, const View& view)
{
    const double pxPerMm = view.pxPerMm();
    cv::Mat reduced = top;
    const double factor = std::min(1.0, pxPerMm / deskPxPerMm);
    if (factor < 0.95)
        cv::resize(top, reduced, {}, factor, factor, cv::INTER_AREA);
    const double mm = 1 / deskPxPerMm * top.cols / reduced.cols;
    const cv::Matx33d topToDesk(
        mm, 0, -mm * (reduced.cols - 1) / 2, 0, mm, -mm * (reduced.rows - 1) / 2, 0, 0, 1);
    cv::Mat seen;
    cv::warpPerspective(reduced,
                        seen,
                        view.deskToPicture() * topToDesk,
                        view.picturePx(),
                        cv::INTER_CUBIC,
                        cv::BORDER_REFLECT);
    return seen;
}

void layOver(cv::Mat& ground, const cv::Mat& colours, cv::Mat& alpha)
{
    alpha.create(ground.size(), CV_8U);
    for (int y = 0; y < ground.rows; ++y) {
        const auto* over = colours.ptr<cv::Vec4b>(y);
        auto* below = ground.ptr<cv::Vec3b>(y);
        auto* cover = alpha.ptr<uchar>(y);
        for (int x = 0; x < ground.cols; ++x) {
            const int a = over[x][3];
            cover[x] = static_cast<uchar>(a);
            if (a == 0)
                continue;
            for (int c = 0; c < 3; ++c)
                below[x][c] = static_cast<uchar>(std::min(255, over[x][c] + below[x][c] * (255 - a) / 255));
        }
    }
}

} // namespace deskpictures

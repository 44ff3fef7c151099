#include "Measures.h"

#include "Background.h"
#include "Codec.h"
#include "PageMatch.h"
#include "PlainText.h"
#include "RtfText.h"
#include "Similarity.h"
#include "Unicode.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>

using deskpictures::BookPage;
using deskpictures::SpreadPage;
using deskpictures::TextRow;

namespace {

constexpr double pointEvery = 3; // mm of a text line
constexpr double degrees = 180 / CV_PI;

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::nth_element(values.begin(), values.begin() + ptrdiff_t(values.size() / 2), values.end());
    return values[values.size() / 2];
}

/// Rows of type; where they are short or there are none (columns, tables, pictures) rows of places from edge
/// to edge, which must be straight as well.
std::vector<TextRow> rowsOf(const SpreadPage& page, cv::Size2d pageMm)
{
    const auto& type = page.page.rows;
    const auto isLong = [&](const TextRow& row) { return row.rightMm - row.leftMm > pageMm.width / 2; };
    if (std::count_if(type.begin(), type.end(), isLong) >= 3)
        return type;
    std::vector<TextRow> rows;
    for (int y = 12; y < pageMm.height - 12; y += 6)
        rows.push_back({10, pageMm.width - 10, double(y), 4, {}});
    return rows;
}

struct LineFit
{
    double tilt = 0; ///< degrees
    std::vector<double> off;
};

LineFit straightThrough(const std::vector<PageMatch::Point>& points)
{
    cv::Point2d mean;
    for (const auto& p : points)
        mean += p.picture / double(points.size());
    double xx = 0, xy = 0;
    for (const auto& p : points) {
        const cv::Point2d d = p.picture - mean;
        xx += d.x * d.x;
        xy += d.x * d.y;
    }
    const double slope = xx > 0 ? xy / xx : 0;
    LineFit fit{std::atan(slope) * degrees, {}};
    for (size_t i = 0; i < points.size(); ++i) {
        // The middle of three neighbours: one patch alone may have been misled.
        std::vector<double> three;
        for (size_t k = std::max<size_t>(i, 1) - 1; k < std::min(i + 2, points.size()); ++k) {
            const cv::Point2d d = points[k].picture - mean;
            three.push_back((d.y - slope * d.x) * std::cos(std::atan(slope)));
        }
        fit.off.push_back(median(three));
    }
    return fit;
}

using Find = std::function<std::vector<PageMatch::Point>(const std::vector<cv::Point2d>&)>;

void measureLines(PageScore& score, const Find& find, const SpreadPage& page, cv::Size2d pageMm)
{
    constexpr size_t leastPoints = 6;
    const double pxPerMm = PageMatch::width / pageMm.width;
    std::vector<double> bends, arches, tilts;
    for (const TextRow& row : rowsOf(page, pageMm)) {
        std::vector<cv::Point2d> asked;
        for (int i = 0; row.leftMm + 1 + i * pointEvery < row.rightMm; ++i)
            asked.emplace_back((row.leftMm + 1 + i * pointEvery) * pxPerMm,
                               (row.baselineMm - row.sizeMm / 4) * pxPerMm);
        const auto points = find(asked);
        if (points.size() < leastPoints)
            continue;
        const LineFit fit = straightThrough(points);
        double sum = 0, most = 0;
        for (const double off : fit.off) {
            sum += std::abs(off);
            most = std::max(most, std::abs(off));
        }
        bends.push_back(sum / double(fit.off.size()));
        arches.push_back(most / (row.sizeMm * pxPerMm));
        tilts.push_back(std::abs(fit.tilt));
    }
    score.lines = int(bends.size());
    if (bends.empty())
        return;
    score.bend = cv::mean(cv::Mat(bends))[0];
    score.arch = median(arches);
    score.tilt = cv::mean(cv::Mat(tilts))[0];
}

cv::Mat greyOf(const cv::Mat& rgb)
{
    cv::Mat grey, wide;
    cv::cvtColor(rgb, grey, cv::COLOR_RGB2GRAY);
    grey.convertTo(wide, CV_32F);
    return wide;
}

/// The colour that nine of ten pixels are darker than, where `where` is set.
cv::Vec3d paperOf(const cv::Mat& rgb, const cv::Mat& where)
{
    cv::Vec3d paper(255, 255, 255);
    for (int c = 0; c < 3; ++c) {
        std::vector<uchar> values;
        for (int y = 0; y < rgb.rows; ++y)
            for (int x = 0; x < rgb.cols; ++x)
                if (where.at<uchar>(y, x))
                    values.push_back(rgb.at<cv::Vec3b>(y, x)[c]);
        if (values.empty())
            continue;
        auto at = values.begin() + ptrdiff_t(values.size() * 9 / 10);
        std::nth_element(values.begin(), at, values.end());
        paper[c] = std::max<double>(*at, 1);
    }
    return paper;
}

/// Covered paper is well again when its colour, next to the paper around, is that of the page.
std::optional<double> fingersLeft(const cv::Mat& fingers, const cv::Mat& truth, const cv::Mat& aligned)
{
    constexpr double allowed = 0.2;
    constexpr int aroundPx = 41; // 6 mm
    cv::Mat covered, around;
    if (fingers.empty())
        return {};
    cv::resize(fingers, covered, truth.size(), 0, 0, cv::INTER_NEAREST);
    if (cv::countNonZero(covered) < 200)
        return {};
    cv::dilate(covered, around, cv::getStructuringElement(cv::MORPH_ELLIPSE, {aroundPx, aroundPx}));
    cv::Mat ring = around & ~covered;
    const cv::Vec3d truePaper = paperOf(truth, ring), paper = paperOf(aligned, ring);
    int wrong = 0, all = 0;
    for (int y = 0; y < covered.rows; ++y)
        for (int x = 0; x < covered.cols; ++x) {
            if (!covered.at<uchar>(y, x))
                continue;
            double most = 0;
            for (int c = 0; c < 3; ++c)
                most = std::max(most,
                                std::abs(aligned.at<cv::Vec3b>(y, x)[c] / paper[c] -
                                         truth.at<cv::Vec3b>(y, x)[c] / truePaper[c]));
            ++all;
            wrong += most > allowed;
        }
    return double(wrong) / all;
}

std::u32string read(const cv::Mat& picture, const char* model)
{
    const QTemporaryDir folder;
    const QString page = folder.filePath(QStringLiteral("page.png"));
    mirvak::Image image;
    image.pixels = picture;
    image.dpi = 300;
    mirvak::removeBackground(image);
    if (mirvak::writeImage(page.toStdString(), image, 95) != mirvak::WriteResult::ok)
        return {};
    QProcess process;
    process.start(QStringLiteral("tesseract"),
                  {page,
                   QStringLiteral("-"),
                   QStringLiteral("--tessdata-dir"),
                   QStringLiteral(LUMRO_OCR_MODELS),
                   QStringLiteral("-l"),
                   QLatin1String(model)});
    process.waitForFinished(120000);
    return mirvak::fromUtf8(process.readAllStandardOutput().toStdString());
}

} // namespace

PageScore
linesOf(const SpreadPage& page, cv::Size2d pageMm, const std::function<cv::Point2d(cv::Point2d)>& place)
{
    PageScore score;
    const double pxPerMm = PageMatch::width / pageMm.width;
    const auto find = [&](const std::vector<cv::Point2d>& points) {
        std::vector<PageMatch::Point> found;
        for (const cv::Point2d& point : points)
            found.push_back({point, place(point / pxPerMm) * PageMatch::width});
        return found;
    };
    measureLines(score, find, page, pageMm);
    return score;
}

cv::Mat trueFlat(const SpreadPage& page)
{
    const QImage& image = page.page.flat.image;
    const cv::Mat rgba(image.height(),
                       image.width(),
                       CV_8UC4,
                       const_cast<uchar*>(image.constBits()),
                       size_t(image.bytesPerLine()));
    cv::Mat rgb;
    cv::cvtColor(rgba, rgb, cv::COLOR_RGBA2RGB);
    return rgb;
}

std::optional<PageScore> measure(const SpreadPage& page, cv::Size2d pageMm, const cv::Mat& picture)
{
    const cv::Mat flat = trueFlat(page);
    const PageMatch match(flat, picture);
    if (!match.isFound())
        return {};
    PageScore score;
    measureLines(
        score, [&](const std::vector<cv::Point2d>& points) { return match.find(points); }, page, pageMm);
    cv::Mat truth;
    cv::resize(flat, truth, match.truthSize(), 0, 0, cv::INTER_AREA);
    const cv::Mat aligned = match.aligned(picture);
    const cv::Rect print(truth.cols / 10, truth.rows / 10, truth.cols * 8 / 10, truth.rows * 8 / 10);
    score.ssim = ssim(greyOf(truth(print)), greyOf(aligned(print)));
    score.fingers = fingersLeft(page.fingers, truth, aligned);
    std::vector<cv::Point2d> places;
    for (int y = 20; y < truth.rows; y += 40)
        for (int x = 20; x < truth.cols; x += 40)
            places.emplace_back(x, y);
    std::vector<double> off;
    for (const auto& p : match.find(places))
        off.push_back(cv::norm(p.picture - match.stiff(p.truth)));
    std::sort(off.begin(), off.end());
    if (!off.empty())
        score.farthest = off[off.size() * 9 / 10];
    return score;
}

std::optional<double> wrongCharacters(const BookPage& page, cv::Size2d pageMm, const cv::Mat& picture)
{
    constexpr double pxPerMm = 300 / 25.4;
    if (!*page.model)
        return {};
    std::u32string truth;
    for (const TextRow& row : page.rows)
        truth += mirvak::fromUtf8(row.words.toStdString()) + U"\n";
    truth = plain(truth);
    const double factor = pageMm.width * pxPerMm / picture.cols;
    cv::Mat scaled;
    cv::resize(picture, scaled, {}, factor, factor, factor < 1 ? cv::INTER_AREA : cv::INTER_CUBIC);
    const std::u32string text = plain(read(scaled, page.model));
    return std::min(1.0, double(editDistance(truth, text)) / double(std::max<size_t>(1, truth.size())));
}
